#include "launcher/xml_depth.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace
{

/* A text, and whether the library takes it for UTF-8. It then skips byte order marks as blanks, and
 * takes with each lead byte of a sequence as many bytes as the sequence should have, also where
 * these are markup. All places are offsets in text; its end stands for "not found". */
struct Xml {
    std::string_view text;
    bool utf8;
};

constexpr std::string_view DECLARATION = "<?xml";
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/* What the library skips beside blanks in UTF-8: the mark, and two codes that are no characters. */
constexpr std::array<std::string_view, 3> SKIPPED = {BYTE_ORDER_MARK, "\xEF\xBF\xBE",
                                                     "\xEF\xBF\xBF"};

bool is_blank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/* First character of an element name, as the XML library sees it: bytes of multi-byte characters
 * count as letters. */
bool begins_name(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    const auto lower = byte | 0x20u;
    return (lower >= 'a' && lower <= 'z') || byte == '_' || byte >= 127;
}

bool continues_name(char character)
{
    return begins_name(character) || (character >= '0' && character <= '9') || character == '-' ||
           character == '.' || character == ':';
}

bool begins_with(std::string_view text, size_t place, std::string_view word)
{
    return text.substr(place, word.size()) == word;
}

char to_lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character | 0x20) : character;
}

/* The word in letters of either case. */
bool begins_with_letters(std::string_view text, size_t place, std::string_view lowerCase)
{
    const std::string_view found = text.substr(place, lowerCase.size());
    return std::equal(found.begin(), found.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return to_lower(a) == b; });
}

size_t behind(std::string_view text, size_t place, std::string_view end)
{
    const size_t found = text.find(end, place);
    return found == text.npos ? text.size() : found + end.size();
}

size_t skip_blanks(const Xml &xml, size_t place)
{
    const auto begins = [&](std::string_view code) { return begins_with(xml.text, place, code); };
    while (place < xml.text.size()) {
        if (is_blank(xml.text[place])) {
            ++place;
        } else if (xml.utf8 && std::any_of(SKIPPED.begin(), SKIPPED.end(), begins)) {
            place += BYTE_ORDER_MARK.size();
        } else {
            break;
        }
    }
    return place;
}

/* The bytes that the library takes as one character of a text or of a quoted value. */
size_t character_size(const Xml &xml, size_t place)
{
    const auto lead = static_cast<unsigned char>(xml.text[place]);
    if (!xml.utf8 || lead < 0xC2 || lead > 0xF4) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/* The character's first place from place on that is not inside a numeric entity. The library takes
 * all from "&#" up to the next ";" for the entity, markup included. */
size_t find_outside_entities(const Xml &xml, size_t place, char character)
{
    while (place < xml.text.size() && xml.text[place] != character) {
        place = begins_with(xml.text, place, "&#") ? behind(xml.text, place, ";")
                                                   : place + character_size(xml, place);
    }
    return std::min(place, xml.text.size());
}

/* Behind the value at place: quoted, or bare up to a blank, a slash or the end of the tag. */
size_t behind_value(const Xml &xml, size_t place)
{
    if (place < xml.text.size() && (xml.text[place] == '"' || xml.text[place] == '\'')) {
        const size_t quote = find_outside_entities(xml, place + 1, xml.text[place]);
        return std::min(quote + 1, xml.text.size());
    }
    while (place < xml.text.size() && !is_blank(xml.text[place]) && xml.text[place] != '/' &&
           xml.text[place] != '>') {
        ++place;
    }
    return place;
}

/* Behind "name = value", or behind the name alone where no equals sign follows. */
size_t behind_assignment(const Xml &xml, size_t place)
{
    while (place < xml.text.size() && continues_name(xml.text[place])) {
        ++place;
    }
    const size_t sign = skip_blanks(xml, place);
    if (sign >= xml.text.size() || xml.text[sign] != '=') {
        return place;
    }
    return behind_value(xml, skip_blanks(xml, sign + 1));
}

/* An XML declaration ends at the first ">" outside the values of its three attributes. */
size_t behind_declaration(const Xml &xml, size_t place)
{
    constexpr std::array<std::string_view, 3> ATTRIBUTES = {"version", "encoding", "standalone"};

    while (place < xml.text.size() && xml.text[place] != '>') {
        place = skip_blanks(xml, place);
        const auto *const attribute =
            std::find_if(ATTRIBUTES.begin(), ATTRIBUTES.end(), [&](std::string_view name) {
                return begins_with_letters(xml.text, place, name);
            });
        if (attribute != ATTRIBUTES.end()) {
            place = behind_assignment(xml, place);
            continue;
        }
        while (place < xml.text.size() && xml.text[place] != '>' && !is_blank(xml.text[place])) {
            ++place;
        }
    }
    return behind(xml.text, place, ">");
}

/* The end of a start tag: at its ">", or at the "/" of an empty element. */
size_t end_of_start_tag(const Xml &xml, size_t place)
{
    while (place < xml.text.size() && xml.text[place] != '>' && xml.text[place] != '/') {
        place = xml.text[place] == '=' ? behind_value(xml, skip_blanks(xml, place + 1)) : place + 1;
    }
    return place;
}

/* Behind markup that neither opens nor closes an element; place is its "<". */
size_t behind_other_markup(const Xml &xml, size_t place)
{
    if (begins_with(xml.text, place, "<!--")) {
        return behind(xml.text, place + 4, "-->");
    }
    if (begins_with(xml.text, place, "<![CDATA[")) {
        return behind(xml.text, place + 9, "]]>");
    }
    if (begins_with_letters(xml.text, place, DECLARATION)) {
        return behind_declaration(xml, place + DECLARATION.size());
    }
    return behind(xml.text, place, ">");
}

/* The depth when the text becomes UTF-8 behind a first declaration, or at once by a byte order
 * mark; or when it never does. */
int depth_of(std::string_view text, bool becomesUtf8)
{
    Xml xml{text, becomesUtf8 && text.starts_with(BYTE_ORDER_MARK)};
    int depth = 0;
    int deepest = 0;
    size_t place = find_outside_entities(xml, 0, '<');

    while (place < text.size()) {
        if (begins_with(text, place, "</")) {
            depth = std::max(depth - 1, 0);
            place = behind(text, place, ">");
        } else if (place + 1 < text.size() && begins_name(text[place + 1])) {
            deepest = std::max(deepest, ++depth);
            place = end_of_start_tag(xml, place + 1);
            if (begins_with(text, place, "/>")) {
                --depth;
            }
        } else {
            const bool isDeclaration = begins_with_letters(text, place, DECLARATION);
            place = behind_other_markup(xml, place);
            xml.utf8 = xml.utf8 || (becomesUtf8 && isDeclaration && depth == 0);
        }
        place = find_outside_entities(xml, place, '<');
    }
    return deepest;
}

} // namespace

/* What encoding a declaration names is not looked at: the library's way is one of the two. */
int xml_depth(const char *text, size_t length)
{
    const std::string_view all(text, length);
    return std::max(depth_of(all, false), depth_of(all, true));
}
