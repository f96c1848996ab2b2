#include "launcher/gateway_config.h"
#include "launcher/start_gateway.h"
#include "tests/launcher/system_stand_in.h"
#include "tests/support/output_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Calls = std::vector<std::string>;

struct Start {
    int status;
    std::string output;
    Calls calls;
};

Start start(const std::string &path)
{
    take_system_calls();
    unsigned protocol = PROTOCOL_NONE;
    Output_Capture output;
    const int status = start_gateway(path.c_str(), &protocol);
    return {status, output.finish(), take_system_calls()};
}

Start start_with(const std::string &children)
{
    const Temporary_Folder folder;
    return start(folder.write("config.xml", "<Config>" + children + "</Config>"));
}

Calls launch(const std::string &record, const std::string &command)
{
    return {"openlog KVX_daemon 1 8", "syslog 6 " + record, "closelog", "system " + command};
}

const Calls SIP = launch("start SIP protocol", "nice -n -20 /tmp/kvx_ctrl_4 -daemon > /dev/null");
const Calls H248 =
    launch("start H.248 protocol",
           "nice -n -20 /root/kvx_megaco_rt -c /tmp/config.xml -i /root/ini.ini -d ");
const Calls FXO =
    launch("start FXS FXO coupled mode",
           "nice -n -10 /root/fxs_fxo_connect -c /root/config.xml -i /root/fxo.ini -d ");
const Calls ALARM = {"system /root/gpio_set_value alarm on"};

TEST(StartGateway, ConfigurationPathIsFixed)
{
    EXPECT_STREQ(GATEWAY_CONFIG_PATH, "/tmp/config.xml");
}

TEST(StartGateway, SipIsLoggedAndLaunched)
{
    const Start done = start_with("<Active_protocol protocol=\"sip\"/>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output, "attribut protocol = sip\nstart SIP protocol\nUDP Server Started\n");
    EXPECT_EQ(done.calls, SIP);
}

TEST(StartGateway, H248IsLoggedAndLaunched)
{
    const Start done = start_with("<Active_protocol protocol=\"h.248\"/>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output, "attribut protocol = h.248\nstart H.248 protocol\nUDP Server Started\n");
    EXPECT_EQ(done.calls, H248);
}

TEST(StartGateway, FxoIsLoggedAndLaunched)
{
    const Start done = start_with("<Active_protocol protocol=\"fxo\"/>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output,
              "attribut protocol = fxo\nstart FXS FXO coupled mode\nUDP Server Started\n");
    EXPECT_EQ(done.calls, FXO);
}

TEST(StartGateway, UnknownProtocolLaunchesSip)
{
    const Start done = start_with("<Active_protocol protocol=\"SIP\"/>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output, "start SIP protocol\nUDP Server Started\n");
    EXPECT_EQ(done.calls, SIP);
}

TEST(StartGateway, LastOfTwoProtocolsIsLaunchedAlone)
{
    const Start done =
        start_with("<Active_protocol protocol=\"h.248\"/><Active_protocol protocol=\"fxo\"/>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.calls, FXO);
}

TEST(StartGateway, WithoutAProtocolNothingIsLaunched)
{
    const Start done = start_with("<Telephony><Active_protocol protocol=\"sip\"/></Telephony>");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.output, "UDP Server Started\n");
    EXPECT_EQ(done.calls, Calls{});
}

TEST(StartGateway, MissingFileRaisesTheAlarm)
{
    const Start done = start(Temporary_Folder().path() + "/config.xml");
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(done.output, "read_config:21\nFailed to open file\n");
    EXPECT_EQ(done.calls, ALARM);
}

TEST(StartGateway, MissingRootRaisesTheAlarm)
{
    const Temporary_Folder folder;
    Output_Capture errors(2);
    const Start done = start(folder.write("config.xml", "<!-- nothing -->"));
    EXPECT_EQ(errors.finish(), "Failed to load file: No root element.\n");
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(done.output, "DON'T LOAD CONFIG");
    EXPECT_EQ(done.calls, ALARM);
}

} // namespace
