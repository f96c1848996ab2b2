#include "launcher/event_log.h"
#include "tests/launcher/system_stand_in.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace
{

using Calls = std::vector<std::string>;

/* The four calls of one record. */
Calls record(const std::string &text)
{
    return {"openlog KVX_daemon 1 8", "syslog 6 " + text, "closelog"};
}

struct Event {
    const char *name;
    std::function<void()> log;
    std::string text;
};

void PrintTo(const Event &event, std::ostream *out)
{
    *out << event.name;
}

class EventLog : public testing::TestWithParam<Event>
{
};

TEST_P(EventLog, SendsOneRecordAndPrintsNothing)
{
    take_system_calls();
    Output_Capture output;
    GetParam().log();
    EXPECT_EQ(output.finish(), "");
    EXPECT_EQ(take_system_calls(), record(GetParam().text));
}

const Event EVENTS[] = {
    {"Call", [] { log_call_event(3, "100", "busy", "200"); },
     "[line 3][number 100]<->[200] - busy"},
    {"CallNegativeLine", [] { log_call_event(-1, "", "", ""); }, "[line -1][number ]<->[] - "},
    {"Number", [] { log_number_event(12, "5551234", "dialled"); },
     "[line 12][number 5551234] - dialled"},
    {"Channel", [] { log_channel_event(2, "a", "b"); }, "[to channel 2]a b"},
    {"Pair", [] { log_pair("left", "right"); }, "left right"},
    {"Line", [] { log_line_event(7, "off hook"); }, "[line 7] - off hook"},
    {"LineAtCapacity", [] { log_line_event(1, std::string(988, 'x').c_str()); },
     "[line 1] - " + std::string(988, 'x')},
    {"LineOverCapacityIsCut", [] { log_line_event(1, std::string(2000, 'x').c_str()); },
     "[line 1] - " + std::string(988, 'x')},
    {"CallOverCapacityIsCut", [] { log_call_event(1, "2", std::string(2000, 'x').c_str(), "3"); },
     "[line 1][number 2]<->[3] - " + std::string(972, 'x')},
    {"NumberOverCapacityIsCut", [] { log_number_event(1, "2", std::string(2000, 'x').c_str()); },
     "[line 1][number 2] - " + std::string(978, 'x')},
    {"PairOverCapacityIsCut", [] { log_pair("a", std::string(20000, 'x').c_str()); },
     "a " + std::string(9997, 'x')},
    {"ChannelOverCapacityIsCut", [] { log_channel_event(1, "a", std::string(20000, 'x').c_str()); },
     "[to channel 1]a " + std::string(9983, 'x')},
    /* The text is the record's format: "%%" comes out as one per-cent sign. */
    {"TextIsTheFormat", [] { log_pair("100%%", "done"); }, "100% done"},
};

INSTANTIATE_TEST_SUITE_P(Table, EventLog, testing::ValuesIn(EVENTS),
                         [](const auto &row) { return row.param.name; });

TEST(EventLogMessage, IsEchoedAndThenSentUnchanged)
{
    take_system_calls();
    on_record([] { puts("the record"); });
    Output_Capture output;
    log_message("start SIP protocol");
    on_record({});
    EXPECT_EQ(output.finish(), "start SIP protocol\nthe record\n");
    EXPECT_EQ(take_system_calls(), record("start SIP protocol"));
}

TEST(EventLogMessage, OverCapacityIsCutInEchoAndRecord)
{
    take_system_calls();
    Output_Capture output;
    log_message(std::string(20000, 'm').c_str());
    EXPECT_EQ(output.finish(), std::string(9999, 'm') + "\n");
    EXPECT_EQ(take_system_calls(), record(std::string(9999, 'm')));
}

TEST(EventLogMessage, EmptyTextIsARecordToo)
{
    take_system_calls();
    Output_Capture output;
    log_message("");
    EXPECT_EQ(output.finish(), "\n");
    EXPECT_EQ(take_system_calls(), record(""));
}

} // namespace
