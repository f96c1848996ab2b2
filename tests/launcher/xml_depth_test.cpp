#include "launcher/xml_depth.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace
{

struct Row {
    const char *name;
    std::string text;
    int depth;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class XmlDepth : public testing::TestWithParam<Row>
{
};

TEST_P(XmlDepth, IsThatOfTheDeepestElement)
{
    EXPECT_EQ(xml_depth(GetParam().text.data(), GetParam().text.size()), GetParam().depth);
}

const Row ROWS[] = {
    {"EmptyText", "", 0},
    {"PlainText", "no element here", 0},
    {"LoneOpen", "<", 0},
    {"RootAlone", "<c/>", 1},
    {"RootWithEndTag", "<c></c>", 1},
    {"Child", "<c><d/></c>", 2},
    {"Siblings", "<c><d/><e></e><f/></c>", 2},
    {"Unclosed", "<a><b><c>", 3},
    {"EndTagTooMany", "</a></a><b/>", 1},
    {"AttributeWithEndTag", "<a x=\"</a>\"><b/></a>", 2},
    {"AttributeWithSlash", "<a x='/>'><b/></a>", 2},
    {"BareAttribute", "<a x=1/><b/>", 1},
    {"BlanksAroundEquals", "<a x = \"<b>\" ><c/></a>", 2},
    {"Comment", "<a><!-- <b><b><b> --><c/></a>", 2},
    {"CommentWithEndTags", "<a><!-- </a></a> --><c/></a>", 2},
    {"UnendedComment", "<a><!-- <b><b>", 1},
    {"CharacterData", "<a><![CDATA[<b><b>]]><c/></a>", 2},
    {"Declaration", "<?xml version=\"1.0\" encoding='UTF-8'?><a/>", 1},
    {"DeclarationWithElements", "<?xml version=\"<b><b>\"?><a/>", 1},
    {"DeclarationUpperCase", "<?XML VERSION=\"<b><b>\"?><a/>", 1},
    {"DeclarationOtherAttribute", "<?xml other=\"<b>\"?><a/>", 1},
    {"LongerAttributeName", "<?xml version.2 = '<b><b>' ?><a/>", 1},
    {"Instruction", "<?php <b><a/>", 1},
    {"DocumentType", "<!DOCTYPE a><a/>", 1},
    {"DigitIsNoElement", "<1><a/>", 1},
    {"ByteAboveAsciiIsAnElement", "<\xC3\xA9><a/></\xC3\xA9>", 2},
    {"ByteOrderMark", "\xEF\xBB\xBF<a/>", 1},
    {"EntityTakesAllUpToTheSemicolon", "<a>&#x</a></a>x41;<b/></a>", 2},
    {"EntityTakesTheQuote", "<a x=\"&#\">#65;</a>\"><b/></a>", 2},
    {"EntityWithoutSemicolon", "<a>&#x<b>", 1},
    {"Entity", "<a>&lt;b&gt;</a>", 1},
};

INSTANTIATE_TEST_SUITE_P(Table, XmlDepth, testing::ValuesIn(ROWS),
                         [](const auto &row) { return row.param.name; });

TEST(XmlDepthLength, BytesBehindTheLengthAreNotRead)
{
    EXPECT_EQ(xml_depth("<a><b>", 3), 1);
    EXPECT_EQ(xml_depth("<a><b>", 4), 1);
    EXPECT_EQ(xml_depth("<a><b>", 5), 2);
}

int tree_depth(const TiXmlNode &node)
{
    int deepest = 0;
    for (const TiXmlNode *child = node.FirstChild(); child; child = child->NextSibling()) {
        deepest = std::max(deepest, tree_depth(*child));
    }
    return deepest + (node.ToElement() ? 1 : 0);
}

/* Whatever soup of markup the library is given, it never nests deeper than was foretold; the two
 * agree where the text is well-formed. */
TEST(XmlDepthAgainstLibrary, IsNeverBelowTheTreeOfTheLibrary)
{
    const std::vector<std::string> pieces = {
        "<a>",         "<a>",       "<a>", "</a>",   "</a>",     "<a/>",         "<a x=\"", "\"",
        "'",           ">",         "/>",  "<?xml ", "version=", "standalone='", "?>",      "<!--",
        "-->",         "<![CDATA[", "]]>", "<!",     "<1",       "<a x=y",       " ",       "text",
        "&lt;",        "&#x",       ";",   "\n",     "<\xC3",    "\xEF\xBB\xBF", "=",       "/",
        "version2=\"",
    };
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);

    int wellFormed = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = "<a>";
        const auto count = random() % 24;
        for (unsigned piece = 0; piece < count; ++piece) {
            text += pieces[random() % pieces.size()];
        }
        text += "</a>";

        TiXmlDocument document;
        document.Parse(text.c_str());
        const int foretold = xml_depth(text.data(), text.size());
        ASSERT_GE(foretold, tree_depth(document)) << text;
        if (!document.Error() && text.find("</a></a>") == text.npos) {
            ++wellFormed;
        }
    }
    EXPECT_GT(wellFormed, 100);
}

} // namespace
