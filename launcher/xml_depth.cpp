#include "launcher/xml_depth.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace
{

/* All places are offsets in the text; the end of the text stands for "not found". */

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

bool begins_with_letters(std::string_view text, size_t place, std::string_view lowerCase)
{
    const std::string_view found = text.substr(place, lowerCase.size());
    return std::equal(found.begin(), found.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return (a | 0x20) == b; });
}

size_t behind(std::string_view text, size_t place, std::string_view end)
{
    const size_t found = text.find(end, place);
    return found == text.npos ? text.size() : found + end.size();
}

size_t skip_blanks(std::string_view text, size_t place)
{
    while (place < text.size() && is_blank(text[place])) {
        ++place;
    }
    return place;
}

/* The character's first place from place on that is not inside a numeric entity. The library takes
 * all from "&#" up to the next ";" for the entity, markup included. */
size_t find_outside_entities(std::string_view text, size_t place, char character)
{
    const char wanted[] = {character, '&', '\0'};
    while ((place = text.find_first_of(wanted, place)) < text.size() && text[place] == '&') {
        place = begins_with(text, place, "&#") ? behind(text, place, ";") : place + 1;
    }
    return std::min(place, text.size());
}

/* Behind the value at place: quoted, or bare up to a blank, a slash or the end of the tag. */
size_t behind_value(std::string_view text, size_t place)
{
    if (place < text.size() && (text[place] == '"' || text[place] == '\'')) {
        const size_t quote = find_outside_entities(text, place + 1, text[place]);
        return std::min(quote + 1, text.size());
    }
    while (place < text.size() && !is_blank(text[place]) && text[place] != '/' &&
           text[place] != '>') {
        ++place;
    }
    return place;
}

/* Behind "name = value", or behind the name alone where no equals sign follows. */
size_t behind_assignment(std::string_view text, size_t place)
{
    while (place < text.size() && continues_name(text[place])) {
        ++place;
    }
    const size_t sign = skip_blanks(text, place);
    if (sign >= text.size() || text[sign] != '=') {
        return place;
    }
    return behind_value(text, skip_blanks(text, sign + 1));
}

/* An XML declaration ends at the first ">" outside the values of its three attributes. */
size_t behind_declaration(std::string_view text, size_t place)
{
    constexpr std::array<std::string_view, 3> ATTRIBUTES = {"version", "encoding", "standalone"};

    while (place < text.size() && text[place] != '>') {
        place = skip_blanks(text, place);
        const auto *const attribute =
            std::find_if(ATTRIBUTES.begin(), ATTRIBUTES.end(), [&](std::string_view name) {
                return begins_with_letters(text, place, name);
            });
        if (attribute != ATTRIBUTES.end()) {
            place = behind_assignment(text, place);
            continue;
        }
        while (place < text.size() && text[place] != '>' && !is_blank(text[place])) {
            ++place;
        }
    }
    return behind(text, place, ">");
}

/* The end of a start tag: at its ">", or at the "/" of an empty element. */
size_t end_of_start_tag(std::string_view text, size_t place)
{
    while (place < text.size() && text[place] != '>' && text[place] != '/') {
        place = text[place] == '=' ? behind_value(text, skip_blanks(text, place + 1)) : place + 1;
    }
    return place;
}

/* Behind markup that neither opens nor closes an element; place is its "<". */
size_t behind_other_markup(std::string_view text, size_t place)
{
    if (begins_with(text, place, "<!--")) {
        return behind(text, place + 4, "-->");
    }
    if (begins_with(text, place, "<![CDATA[")) {
        return behind(text, place + 9, "]]>");
    }
    if (begins_with_letters(text, place, "<?xml")) {
        return behind_declaration(text, place + 5);
    }
    return behind(text, place, ">");
}

} // namespace

int xml_depth(const char *text, size_t length)
{
    const std::string_view all(text, length);
    int depth = 0;
    int deepest = 0;
    size_t place = find_outside_entities(all, 0, '<');

    while (place < all.size()) {
        if (begins_with(all, place, "</")) {
            depth = std::max(depth - 1, 0);
            place = behind(all, place, ">");
        } else if (place + 1 < all.size() && begins_name(all[place + 1])) {
            deepest = std::max(deepest, ++depth);
            place = end_of_start_tag(all, place + 1);
            if (begins_with(all, place, "/>")) {
                --depth;
            }
        } else {
            place = behind_other_markup(all, place);
        }
        place = find_outside_entities(all, place, '<');
    }
    return deepest;
}
