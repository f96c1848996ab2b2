#include "launcher/gateway_config.h"

#include "launcher/xml_depth.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <tinyxml.h>

namespace
{

struct Protocol {
    const char *attribute;
    unsigned selector;
};

constexpr Protocol PROTOCOLS[] = {
    {"sip", PROTOCOL_SIP},
    {"h.248", PROTOCOL_H248},
    {"fxo", PROTOCOL_FXO},
};

constexpr int LOAD_FAILURE_MARK = 21; /* part of the message, not a line of this file */

constexpr const char *NOT_READ = "Failed to open file";
constexpr const char *TOO_LARGE = "Error: file too large.";

/* The XML library steps over a UTF-8 character as long as its first byte says, also where the text
 * ends inside it: so many NULs behind the text catch it. */
constexpr size_t UTF8_LONGEST = 4;

struct Close_File {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

/* This and the next two return null when all went well, else the reason. */

/* What is there but no file is refused before it is opened: a pipe would keep the start-up waiting,
 * and memory may not hold a large file. */
const char *look_at_file(const char *path)
{
    struct stat facts;
    if (stat(path, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return NOT_READ;
    }
    return facts.st_size > GATEWAY_CONFIG_SIZE_LIMIT ? TOO_LARGE : nullptr;
}

/* The file may have grown meanwhile. */
const char *read_file(const char *path, std::string *text)
{
    const std::unique_ptr<std::FILE, Close_File> file(std::fopen(path, "rb"));
    char block[16384];
    size_t got = 0;
    while (file && (got = std::fread(block, 1, sizeof block, file.get())) > 0) {
        if (text->size() + got > GATEWAY_CONFIG_SIZE_LIMIT) {
            return TOO_LARGE;
        }
        text->append(block, got);
    }
    return file && !std::ferror(file.get()) ? nullptr : NOT_READ;
}

const char *load(TiXmlDocument &document, const char *path)
{
    std::string text;
    if (const char *const reason = look_at_file(path)) {
        return reason;
    }
    if (const char *const reason = read_file(path, &text)) {
        return reason;
    }
    if (xml_depth(text.data(), text.size()) > XML_DEPTH_LIMIT) {
        return "Error: elements nested too deeply.";
    }
    text.append(UTF8_LONGEST, '\0');
    document.Parse(text.c_str());
    return document.Error() ? document.ErrorDesc() : nullptr;
}

unsigned protocol_of(const TiXmlElement &element)
{
    const char *const attribute = element.Attribute("protocol");
    const auto *const known =
        std::find_if(std::begin(PROTOCOLS), std::end(PROTOCOLS), [&](const Protocol &protocol) {
            return attribute && std::strcmp(attribute, protocol.attribute) == 0;
        });
    if (known == std::end(PROTOCOLS)) {
        return PROTOCOL_SIP;
    }
    std::printf("attribut protocol = %s\n", attribute);
    return known->selector;
}

void report_failed_load(const char *reason)
{
    std::printf("%s:%d\n%s\n", "read_config", LOAD_FAILURE_MARK, reason);
}

void report_missing_root()
{
    std::fflush(stdout);
    std::fputs("Failed to load file: No root element.\n", stderr);
    std::fputs("DON'T LOAD CONFIG", stdout); /* no line feed: meant */
}

int read_document(const char *path, unsigned *protocol)
{
    TiXmlDocument document;
    if (const char *const reason = load(document, path)) {
        report_failed_load(reason);
        return 0;
    }
    const TiXmlElement *const root = document.FirstChildElement();
    if (!root) {
        report_missing_root();
        document.Clear();
        return 0;
    }
    for (const TiXmlElement *child = root->FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        if (std::strcmp(child->Value(), "Active_protocol") == 0) {
            *protocol = protocol_of(*child);
        }
    }
    return 1;
}

} // namespace

int read_config(const char *path, unsigned *protocol)
{
    try {
        return read_document(path, protocol);
    } catch (const std::exception &) { /* only memory can run out here */
        report_failed_load("Error: out of memory.");
        return 0;
    }
}
