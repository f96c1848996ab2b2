#include "launcher/xml_depth.h"
#include "tests/support/random_seed.h"

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

const std::string DECLARATION = "<?xml version=\"1.0\"?>";
const std::string MARK = "\xEF\xBB\xBF";

const Row ROWS[] = {
    {"EmptyText", "", 0},
    {"PlainText", "no element here", 0},
    {"LoneOpen", "<", 0},
    {"RootAlone", "<c/>", 1},
    {"NamesBeginWithAnUnderscore", "<_a><_b/></_a>", 2},
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
    {"OtherCodeThanAQuestionMarkIsNoDeclaration", "<\x1Fxml version=\"><a>", 1},
    {"AttributeNameWithAColon", "<?xml version:x='<b><b>'?><a/>", 1},
    {"AttributeWithoutAValue", "<?xml version?><a/>", 1},
    {"DeclarationCutOffInAName", "<?xml version", 0},
    {"DeclarationCutOffInAnotherName", "<?xml other", 0},
    {"DeclarationCutOffBehindABlank", "<?xml ", 0},
    {"DeclarationCutOffBehindEquals", "<?xml version=", 0},
    {"DeclarationCutOffInAValue", "<?xml version=1", 0},
    {"TagCutOffBehindEquals", "<a x = ", 1},
    {"ControlCharacterIsNoBlank", "<a x=\x01\"><b/>", 2},
    {"Instruction", "<?php <b><a/>", 1},
    {"DocumentType", "<!DOCTYPE a><a/>", 1},
    {"DigitIsNoElement", "<1><a/>", 1},
    {"ByteAboveAsciiIsAnElement", "<\xC3\xA9><a/></\xC3\xA9>", 2},
    {"ByteOrderMark", "\xEF\xBB\xBF<a/>", 1},
    {"EntityTakesAllUpToTheSemicolon", "<a>&#x</a></a>x41;<b/></a>", 2},
    {"EntityTakesTheQuote", "<a x=\"&#\">#65;</a>\"><b/></a>", 2},
    {"EntityWithoutSemicolon", "<a>&#x<b>", 1},
    {"Entity", "<a>&lt;b&gt;</a>", 1},

    /* In UTF-8, a lead byte takes the bytes that its sequence should have, markup or not. */
    {"Utf8", DECLARATION + "<a x=\"\xC3\xA9\">\xE2\x82\xAC<!-- <b><b> --><c/>\xF0\x9F\x98\x80</a>",
     2},
    {"LeadOfTwoTakesMarkup", DECLARATION + "<a>\xC3<!--<b><c>", 3},
    {"LeadOfThreeTakesMarkup", DECLARATION + "<a>\xE2<!--<b><c>", 3},
    {"LeadOfFourTakesMarkup", DECLARATION + "<a>\xF0<!--<b><c>", 3},
    {"LowestLeadTakesMarkup", DECLARATION + "<a>\xC2<!--<b><c>", 3},
    {"HighestLeadTakesMarkup", DECLARATION + "<a>\xF4<!--<b><c>", 3},
    {"BelowTheLeadsTakesNothing", DECLARATION + "<a>\xC1<!--<b><c>", 1},
    {"AboveTheLeadsTakesNothing", DECLARATION + "<a>\xF5<!--<b><c>", 1},
    {"LeadAtTheEnd", DECLARATION + "<a>\xF0", 1},
    {"LeadTakesTheQuote", DECLARATION + "<a x=\"\xC3\" =\"><a x=\"\xC3\" =\"><a x=\"\xC3\" =\">",
     3},
    {"LeadTakesMarkupBehindAMark", MARK + "<a>\xC3<!--<b><c>", 3},
    {"LeadTakesNothingWithoutADeclaration", "<a>\xC3<!--<b><c>", 1},
    {"LeadTakesNothingWithADeclarationInAnElement", "<a>" + DECLARATION + "\xC3<!--<b><c>", 1},
    {"LeadTakesNothingBehindALateMark", "<a>" + MARK + "\xC3<!--<b><c>", 1},
    {"MarkBeforeAQuoteIsABlank", DECLARATION + "<a b=" + MARK + "\"><!-- \"><b>", 2},
    {"NoCharacterBeforeAQuoteIsABlank",
     DECLARATION + "<a b=\xEF\xBF\xBE\"><!-- \"><b c=\xEF\xBF\xBF\"><!-- \"><c>", 3},
    {"MarkWithoutADeclarationIsNoBlank", "<a b=" + MARK + "\"><!-- \"><b>", 1},
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

/* Whatever soup of markup the library is given, it never nests deeper than was foretold. */
TEST(XmlDepthAgainstLibrary, IsNeverBelowTheTreeOfTheLibrary)
{
    const std::vector<std::string> pieces = {
        "<a>",
        "<a>",
        "<a>",
        "</a>",
        "</a>",
        "<a/>",
        "<a x=\"",
        "\"",
        "'",
        ">",
        "/>",
        "<?xml ",
        "version=",
        "standalone='",
        "?>",
        "<!--",
        "-->",
        "<![CDATA[",
        "]]>",
        "<!",
        "<1",
        "<a x=y",
        " ",
        "text",
        "&lt;",
        "&#x",
        ";",
        "\n",
        "<\xC3",
        "\xEF\xBB\xBF",
        "=",
        "/",
        "version2=\"",
        "\xC3",
        "\xE2",
        "\xF0",
        "\xEF\xBF\xBE",
        "<a x=",
    };
    const std::vector<std::string> beginnings = {
        "", MARK, DECLARATION, "<?xml encoding='utf8'?>", "<?xml encoding='ISO-8859-1'?>",
    };
    std::mt19937 random(test_seed());

    int loaded = 0;
    const int rounds = test_rounds(20000);
    for (int round = 0; round < rounds; ++round) {
        std::string text = beginnings[random() % beginnings.size()] + "<a>";
        const auto count = random() % 24;
        for (unsigned piece = 0; piece < count; ++piece) {
            text += pieces[random() % pieces.size()];
        }
        text += "</a>";

        TiXmlDocument document;
        document.Parse(text.c_str());
        const int foretold = xml_depth(text.data(), text.size());
        ASSERT_GE(foretold, tree_depth(document)) << text;
        loaded += document.Error() ? 0 : 1;
    }
    EXPECT_GT(loaded, 100);
}

/* A well-formed element of just so many levels, with siblings of fewer. */
std::string element(int levels, std::mt19937 &random)
{
    const std::vector<std::string> others = {
        "text", "&lt;&#60;", "<!-- <a><a> -->", "<![CDATA[<a><a>]]>", "<?a b?>", "\xC3\xA9",
    };
    std::string text = "<a x=\"/>\" y = '<a>\xE2\x82\xAC'>";
    for (auto count = random() % 3; count > 0; --count) {
        text += others[random() % others.size()];
        if (levels > 1) {
            text +=
                element(1 + static_cast<int>(random() % static_cast<unsigned>(levels - 1)), random);
        }
    }
    return text + (levels > 1 ? element(levels - 1, random) : "<!---->") + "</a>\n";
}

TEST(XmlDepthAgainstLibrary, IsThatOfTheLibraryWhereTheTextIsWellFormed)
{
    std::mt19937 random(test_seed());
    const int rounds = test_rounds(200);
    for (int round = 0; round < rounds; ++round) {
        const int levels = 1 + round % 8;
        const std::string text = (round % 2 ? DECLARATION : "") + element(levels, random);
        TiXmlDocument document;
        document.Parse(text.c_str());
        ASSERT_FALSE(document.Error()) << text;
        ASSERT_EQ(tree_depth(document), levels) << text;
        ASSERT_EQ(xml_depth(text.data(), text.size()), levels) << text;
    }
}

} // namespace
