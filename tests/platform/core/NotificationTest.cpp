#include "platform/core/DarwinNotifyCenter.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(DarwinNotifyCenter, NamesSplitIntoInterfaceAndMember)
{
    EXPECT_TRUE(isValidNotificationName("com.mossgate.ampwell.settingsChanged"));
    EXPECT_FALSE(isValidNotificationName("settingsChanged"));
    EXPECT_FALSE(isValidNotificationName("com.mossgate.ampwell."));
    EXPECT_FALSE(isValidNotificationName("com..x"));
}

TEST(DarwinNotifyCenter, ListenerReceivesEachPostOfItsNameOnly)
{
    DarwinNotificationListener listener("com.mossgate.ampwell.settingsChanged");
    ASSERT_TRUE(listener.isListening()) << "run under dbus-run-session";
    postDarwinNotification("com.mossgate.ampwell.somethingElse");
    postDarwinNotification("com.mossgate.ampwell.settingsChanged");
    postDarwinNotification("com.mossgate.ampwell.settingsChanged");
    EXPECT_EQ(listener.waitForNext(5s), "com.mossgate.ampwell.settingsChanged");
    EXPECT_EQ(listener.waitForNext(5s), "com.mossgate.ampwell.settingsChanged");
    EXPECT_FALSE(listener.waitForNext(200ms));
}
