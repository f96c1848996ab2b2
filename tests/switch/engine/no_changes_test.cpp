#include "switch/engine/apply.h"
#include "tests/switch/engine/board.h"

/* The linker puts this in the place of the comparison, which never finds two records equal. */
extern "C" bool __wrap__Z19CompareSwitchConfigP17SW_Config_ChangesPK9SW_ConfigS3_(
    SW_Config_Changes *changes, const SW_Config *a, const SW_Config *b);

extern "C" bool __wrap__Z19CompareSwitchConfigP17SW_Config_ChangesPK9SW_ConfigS3_(
    SW_Config_Changes * /*changes*/, const SW_Config * /*a*/, const SW_Config * /*b*/)
{
    return false;
}

namespace
{

class NoChanges : public Board
{
protected:
    NoChanges()
    {
        set_custom_defaults();
        bring_up();
        running_.ports[1].vid = 10;
    }

    std::string apply(bool log)
    {
        return printed([&] { result_ = SW_Apply_Changes(&control_, log, true); });
    }

    bool result_ = false;
};

TEST_F(NoChanges, AreReportedAndCopied)
{
    EXPECT_EQ(apply(true), "Switch: [no_changes]\n");
    EXPECT_TRUE(result_);
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(NoChanges, AreSilentWithoutTheLog)
{
    EXPECT_EQ(apply(false), "");
    EXPECT_TRUE(applied_is_running());
}

} // namespace
