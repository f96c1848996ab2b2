#include "launcher/gateway_config.h"
#include "launcher/xml_depth.h"
#include "tests/support/failing_memory.h"
#include "tests/support/output_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr unsigned UNTOUCHED = 77;

struct Reading {
    int result;
    unsigned protocol;
    std::string output;
    std::string errors;
};

Reading read(const std::string &path, int allocations = Failing_Memory::NO_LIMIT)
{
    Reading reading{.result = -1, .protocol = UNTOUCHED, .output = {}, .errors = {}};
    Output_Capture output(1);
    Output_Capture errors(2);
    {
        const Failing_Memory memory(allocations);
        reading.result = read_config(path.c_str(), &reading.protocol);
    }
    reading.errors = errors.finish();
    reading.output = output.finish();
    return reading;
}

Reading read_text(const std::string &text)
{
    const Temporary_Folder folder;
    return read(folder.write("config.xml", text));
}

struct Row {
    const char *name;
    std::string text;
    int result;
    unsigned protocol;
    std::string output;
    std::string errors;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class ReadConfig : public testing::TestWithParam<Row>
{
};

TEST_P(ReadConfig, AnswersAsTheTableSays)
{
    const Row &row = GetParam();
    const Reading reading = read_text(row.text);
    EXPECT_EQ(reading.result, row.result);
    EXPECT_EQ(reading.protocol, row.protocol);
    EXPECT_EQ(reading.output, row.output);
    EXPECT_EQ(reading.errors, row.errors);
}

std::string active(const std::string &protocol)
{
    return "<Active_protocol protocol=\"" + protocol + "\"/>";
}

std::string root(const std::string &children)
{
    return "<?xml version=\"1.0\"?>\n<Config>\n" + children + "\n</Config>\n";
}

std::string nested(int levels)
{
    std::string text;
    for (int level = 0; level < levels; ++level) {
        text += "<a>";
    }
    for (int level = 0; level < levels; ++level) {
        text += "</a>";
    }
    return text;
}

std::string repeated(int times, const std::string &text)
{
    std::string all;
    for (int time = 0; time < times; ++time) {
        all += text;
    }
    return all;
}

const std::string NO_ROOT = "Failed to load file: No root element.\n";

const Row ROWS[] = {
    {"Sip", root(active("sip")), 1, 1, "attribut protocol = sip\n", ""},
    {"H248", root(active("h.248")), 1, 2, "attribut protocol = h.248\n", ""},
    {"Fxo", root(active("fxo")), 1, 3, "attribut protocol = fxo\n", ""},

    {"UpperCaseIsUnknown", root(active("SIP")), 1, 1, "", ""},
    {"UnknownText", root(active("mgcp")), 1, 1, "", ""},
    {"LongerText", root(active("h.2480")), 1, 1, "", ""},
    {"ShorterText", root(active("fx")), 1, 1, "", ""},
    {"BlankBeforeText", root(active(" fxo")), 1, 1, "", ""},
    {"EmptyText", root(active("")), 1, 1, "", ""},
    {"AttributeMissing", root("<Active_protocol/>"), 1, 1, "", ""},
    {"AttributeOfOtherCase", root("<Active_protocol Protocol=\"fxo\"/>"), 1, 1, "", ""},
    {"OtherAttributesBeside",
     root("<Active_protocol a=\"1\" protocol='fxo' b=\"2\">x</Active_protocol>"), 1, 3,
     "attribut protocol = fxo\n", ""},

    {"NoChild", root(""), 1, UNTOUCHED, "", ""},
    {"OtherChildren", root("<Other protocol=\"fxo\"/><Passive_protocol protocol=\"sip\"/>"), 1,
     UNTOUCHED, "", ""},
    {"NameOfOtherCase", root("<active_protocol protocol=\"fxo\"/>"), 1, UNTOUCHED, "", ""},
    {"LongerName", root("<Active_protocols protocol=\"fxo\"/>"), 1, UNTOUCHED, "", ""},
    {"DeeperElement", root("<Telephony>" + active("fxo") + "</Telephony>"), 1, UNTOUCHED, "", ""},
    {"RootIsNoChild", active("fxo"), 1, UNTOUCHED, "", ""},
    {"SecondRootIsNotSeen", "<Config/>" + root(active("fxo")), 1, UNTOUCHED, "", ""},

    {"LastOfTwoDecides", root(active("h.248") + active("fxo")), 1, 3,
     "attribut protocol = h.248\nattribut protocol = fxo\n", ""},
    {"UnknownAfterKnownDecides", root(active("fxo") + active("none")), 1, 1,
     "attribut protocol = fxo\n", ""},
    {"OthersBetween", root(active("sip") + "<!-- c -->text<Other/>" + active("h.248") + "<Other/>"),
     1, 2, "attribut protocol = sip\nattribut protocol = h.248\n", ""},

    {"EntityInAttribute", root(active("s&#105;p")), 1, 1, "attribut protocol = sip\n", ""},
    {"NamedEntityInAttribute", root(active("&amp;")), 1, 1, "", ""},
    {"ByteOrderMark", "\xEF\xBB\xBF" + root(active("fxo")), 1, 3, "attribut protocol = fxo\n", ""},
    {"CarriageReturns", "<Config>\r\n<Active_protocol\r\nprotocol=\"fxo\"/>\r\n</Config>\r\n", 1, 3,
     "attribut protocol = fxo\n", ""},
    {"TextBehindTheRoot", root(active("fxo")) + "more", 1, 3, "attribut protocol = fxo\n", ""},

    {"DeclarationOnly", "<?xml version=\"1.0\"?>", 0, UNTOUCHED, "DON'T LOAD CONFIG", NO_ROOT},
    {"CommentOnly", "<!-- nothing -->", 0, UNTOUCHED, "DON'T LOAD CONFIG", NO_ROOT},

    {"EmptyFile", "", 0, UNTOUCHED, "read_config:21\nError document empty.\n", ""},
    {"BlanksOnly", "  \n\t\n", 0, UNTOUCHED, "read_config:21\nError document empty.\n", ""},
    {"PlainText", "protocol=sip", 0, UNTOUCHED, "read_config:21\nError document empty.\n", ""},
    {"UnclosedRoot", "<Config>" + active("fxo"), 0, UNTOUCHED,
     "read_config:21\nError reading Element value.\n", ""},
    {"WrongEndTag", "<Config>" + active("fxo") + "<a></b></Config>", 0, UNTOUCHED,
     "read_config:21\nError reading end tag.\n", ""},
    {"AttributeWithoutValue", "<Config><Active_protocol protocol/></Config>", 0, UNTOUCHED,
     "read_config:21\nError reading Attributes.\n", ""},

    {"CutInsideACharacterOfText", "\xEF\xBB\xBF<Config>\xF0", 0, UNTOUCHED,
     "read_config:21\nError reading Element value.\n", ""},
    {"CutInsideACharacterOfAnAttribute", "\xEF\xBB\xBF<Config><Active_protocol protocol=\"\xF0\x90",
     0, UNTOUCHED, "read_config:21\nError parsing Element.\n", ""},
    {"CutInsideACharacterBehindAnElement", "\xEF\xBB\xBF<Config/>\xE2", 1, UNTOUCHED, "", ""},
    {"NulEndsTheText", root(active("fxo")) + std::string("\0<", 2), 1, 3,
     "attribut protocol = fxo\n", ""},
    {"NulInsideTheRoot", "<Config>" + active("fxo") + std::string("\0</Config>", 10), 0, UNTOUCHED,
     "read_config:21\nError reading Element value.\n", ""},
};

INSTANTIATE_TEST_SUITE_P(Table, ReadConfig, testing::ValuesIn(ROWS),
                         [](const auto &row) { return row.param.name; });

void expect_selected(const Reading &reading, unsigned protocol, const std::string &output)
{
    EXPECT_EQ(reading.result, 1);
    EXPECT_EQ(reading.protocol, protocol);
    EXPECT_EQ(reading.output, output);
    EXPECT_EQ(reading.errors, "");
}

void expect_refused(const Reading &reading, const std::string &reason)
{
    EXPECT_EQ(reading.result, 0);
    EXPECT_EQ(reading.protocol, UNTOUCHED);
    EXPECT_EQ(reading.output, "read_config:21\n" + reason + "\n");
    EXPECT_EQ(reading.errors, "");
}

TEST(ReadConfigLargeFile, LastOfAHundredThousandChildrenDecides)
{
    expect_selected(read_text(root(repeated(100000, active("SIP")) + active("fxo"))), 3,
                    "attribut protocol = fxo\n");
}

constexpr size_t LARGEST = 4194304;
constexpr const char *TOO_LARGE = "Error: file too large.";

TEST(ReadConfigLargeFile, OfTheLargestSizeIsReadThrough)
{
    const size_t others = root(active("fxo")).size();
    expect_selected(read_text(root(std::string(LARGEST - others, 'x') + active("fxo"))), 3,
                    "attribut protocol = fxo\n");
}

/* Reading it would need memory. */
TEST(ReadConfigLargeFile, OneByteLargerIsRefusedUnread)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("config.xml", root(active("fxo")));
    ASSERT_EQ(truncate(path.c_str(), LARGEST + 1), 0);
    expect_refused(read(path, 0), TOO_LARGE);
}

/* A file with more in it than its size told: the list of this process's mappings, of size 0, which
 * so many mappings of a file with a long name make large. */
class Many_Mappings
{
public:
    Many_Mappings()
    {
        const int file = open(folder_.write(NAME, "x").c_str(), O_RDONLY | O_CLOEXEC);
        for (void *&mapping : mappings_) {
            mapping = mmap(nullptr, 1, PROT_READ, MAP_PRIVATE, file, 0);
            EXPECT_NE(mapping, MAP_FAILED);
        }
        close(file);
    }
    ~Many_Mappings()
    {
        for (void *const mapping : mappings_) {
            munmap(mapping, 1);
        }
    }
    Many_Mappings(const Many_Mappings &) = delete;
    Many_Mappings &operator=(const Many_Mappings &) = delete;

private:
    inline static const std::string NAME = std::string(250, 'x');
    Temporary_Folder folder_;
    std::array<void *, LARGEST / 250> mappings_{};
};

TEST(ReadConfigLargeFile, IsRefusedWhenItGrowsWhileItIsRead)
{
    const Many_Mappings mappings;
    expect_refused(read("/proc/self/maps"), TOO_LARGE);
}

/*
 * Ends a document when the library reads on behind its copy of the text. Blocks of the copy's size
 * are handed out again as they were given back, with this in the bytes that the copy leaves over.
 */
void leave_an_end_behind(size_t copySize)
{
    constexpr std::string_view END = "</a></a></a>   ";
    volatile char *const block = static_cast<char *>(std::malloc(copySize + END.size()));
    ASSERT_NE(block, nullptr);
    for (size_t i = 0; i < END.size(); ++i) {
        block[copySize + i] = END[i];
    }
    std::free(const_cast<char *>(block));
}

TEST(ReadConfigCutCharacter, IsTheEndOfTheText)
{
    constexpr size_t COPY_SIZE = 889; /* 15 bytes short of the block that holds it */
    for (const char *const cut : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F\x98"}) {
        std::string text = "<?xml version=\"1.0\"?><a>";
        text += std::string(COPY_SIZE - 1 - text.size() - std::strlen(cut), 'x') + cut;
        const Temporary_Folder folder;
        const std::string path = folder.write("config.xml", text);
        leave_an_end_behind(COPY_SIZE);
        expect_refused(read(path), "Error reading Element value.");
    }
}

TEST(ReadConfigNesting, DeepestAllowedIsRead)
{
    expect_selected(read_text(nested(XML_DEPTH_LIMIT)), UNTOUCHED, "");
}

TEST(ReadConfigNesting, OneLevelMoreIsRefused)
{
    expect_refused(read_text(nested(XML_DEPTH_LIMIT + 1)), "Error: elements nested too deeply.");
}

TEST(ReadConfigNesting, AHundredThousandLevelsAreRefused)
{
    expect_refused(read_text(nested(100000)), "Error: elements nested too deeply.");
}

/* The broken sequence takes the "<" of the comment with it: what follows are elements after all. */
TEST(ReadConfigNesting, LevelsBehindABrokenUtf8SequenceAreCounted)
{
    expect_refused(read_text("<?xml version=\"1.0\"?><a>\xC3<!--" + repeated(100000, "<a>")),
                   "Error: elements nested too deeply.");
}

constexpr const char *NOT_OPENED = "Failed to open file";

TEST(ReadConfigPath, MissingFileIsALoadFailure)
{
    expect_refused(read(Temporary_Folder().path() + "/config.xml"), NOT_OPENED);
}

TEST(ReadConfigPath, DirectoryIsALoadFailure)
{
    const Temporary_Folder folder;
    expect_refused(read(folder.path()), NOT_OPENED);
}

TEST(ReadConfigPath, PipeIsALoadFailureAndIsNotWaitedFor)
{
    const Temporary_Folder folder;
    const std::string pipe = folder.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expect_refused(read(pipe), NOT_OPENED);
}

/* The process's memory is a regular file, and nothing is mapped at its start. */
TEST(ReadConfigPath, FileThatCannotBeReadIsALoadFailure)
{
    expect_refused(read("/proc/self/mem"), NOT_OPENED);
}

TEST(ReadConfigPath, FileWithoutRoomInMemoryIsALoadFailure)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("config.xml", root(active("fxo")));
    expect_refused(read(path, 0), "Error: out of memory.");
}

/* Ends the process, with 0 when each load but the last was refused and that one succeeded. */
[[noreturn]] void load_with_ever_more_memory(const std::string &path)
{
    int allowed = 1;
    Reading reading = read(path, allowed);
    while (reading.result == 0 && !testing::Test::HasFailure()) {
        expect_refused(reading, "Error: out of memory.");
        reading = read(path, ++allowed);
    }
    expect_selected(reading, 3, "attribut protocol = fxo\n");
    EXPECT_GT(allowed, 10);
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

/* In a process of its own: the XML library does not give back what it had under way. */
TEST(ReadConfigMemoryDeathTest, RunsOutAtEachAllocationOfALoadInTurn)
{
    const Temporary_Folder folder;
    const std::string path = folder.write(
        "config.xml", root("<!-- a comment, long enough -->text &amp; more text than fits"
                           "<![CDATA[as it is, without an end]]><?instruction of some length?>" +
                           active("fxo")));
    EXPECT_EXIT(load_with_ever_more_memory(path), testing::ExitedWithCode(0), "");
}

/* Root, who may read every file, becomes another user while one exists. */
class Without_Root
{
public:
    Without_Root() : user_(geteuid()) { changed_ = user_ == 0 && seteuid(NOBODY) == 0; }
    ~Without_Root()
    {
        if (changed_ && seteuid(user_) != 0) {
            std::abort();
        }
    }
    Without_Root(const Without_Root &) = delete;
    Without_Root &operator=(const Without_Root &) = delete;

private:
    static constexpr uid_t NOBODY = 65534;
    uid_t user_;
    bool changed_;
};

TEST(ReadConfigPath, UnreadableFileIsALoadFailure)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("config.xml", root(active("fxo")));
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const Without_Root user;
    if (std::FILE *const file = std::fopen(path.c_str(), "r")) {
        std::fclose(file);
        GTEST_SKIP() << "this user may read every file";
    }
    ASSERT_EQ(errno, EACCES);
    expect_refused(read(path), NOT_OPENED);
}

TEST(ReadConfigOutput, KeepsItsOrderWithStandardError)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("config.xml", "<!-- nothing -->");
    const Output_Capture errors(2);
    Output_Capture output(1);
    dup2(1, 2);
    std::printf("printed before\n");
    unsigned protocol = UNTOUCHED;
    EXPECT_EQ(read_config(path.c_str(), &protocol), 0);
    EXPECT_EQ(output.finish(), "printed before\n" + NO_ROOT + "DON'T LOAD CONFIG");
}

} // namespace
