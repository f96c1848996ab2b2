/* The launcher's configuration, loaded as the launcher loads it. */

#include "fuzz/target.h"
#include "launcher/gateway_config.h"
#include "launcher/xml_depth.h"
#include "tests/support/memory_file.h"

#include <algorithm>
#include <tinyxml.h>

namespace
{

constexpr unsigned UNTOUCHED = 77;
constexpr const char *NO_ROOT = "Failed to load file: No root element.\n";

/* The output of a file that was read: a line for each known protocol. Empty for no line. */
std::string last_protocol(std::string lines)
{
    constexpr std::string_view START = "attribut protocol = ";
    std::string last;
    while (!lines.empty()) {
        REQUIRE(lines.starts_with(START));
        const size_t end = lines.find('\n');
        REQUIRE(end != lines.npos);
        last = lines.substr(START.size(), end - START.size());
        REQUIRE(last == "sip" || last == "h.248" || last == "fxo");
        lines.erase(0, end + 1);
    }
    return last;
}

void require_answer(int result, unsigned protocol, const std::string &lines,
                    const std::string &errors)
{
    if (result == 0) {
        REQUIRE(protocol == UNTOUCHED);
        REQUIRE(errors.empty() ? lines.starts_with("read_config:21\n") && lines.ends_with('\n')
                               : lines == "DON'T LOAD CONFIG" && errors == NO_ROOT);
        return;
    }
    const std::string last = last_protocol(lines);
    REQUIRE(result == 1 && errors.empty());
    REQUIRE(protocol == PROTOCOL_SIP || (protocol == UNTOUCHED && last.empty()) ||
            (protocol == PROTOCOL_H248 && last == "h.248") ||
            (protocol == PROTOCOL_FXO && last == "fxo"));
}

int depth_of(const TiXmlNode &node)
{
    int deepest = 0;
    for (const TiXmlElement *child = node.FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement()) {
        deepest = std::max(deepest, 1 + depth_of(*child));
    }
    return deepest;
}

/* The library's recursion never goes deeper than the launcher counts before. */
void require_depth(const std::string &text)
{
    const int counted = xml_depth(text.data(), text.size());
    if (counted > XML_DEPTH_LIMIT) {
        return;
    }
    constexpr size_t LONGEST_CHARACTER = 4; /* which the library may take beyond the end */
    TiXmlDocument document;
    document.Parse((text + std::string(LONGEST_CHARACTER, '\0')).c_str());
    REQUIRE(depth_of(document) <= counted);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Caught_Stream errors(stderr);
    const std::string text(data, data + size);
    const Memory_File file(text);
    unsigned protocol = UNTOUCHED;
    const int result = read_config(file.path().c_str(), &protocol);
    require_answer(result, protocol, caughtOutput.take(), errors.take());
    require_depth(text);
    return 0;
}
