#include "support/Notifications.h"

#include <gtest/gtest.h>

using namespace px;

TEST(Notifications, HandlerNamesFollowTheDottedParts) {
    EXPECT_EQ(selWithName("app.color.changed"), "handleSignal_color_changed:");
    EXPECT_EQ(selWithName("color.changed"), "handleSignal_color_changed:");
    EXPECT_EQ(selWithName("plain"), "handleSignal:");
    EXPECT_EQ(selWithName("a.b.c.d"), "handleSignal:");
}

TEST(Notifications, AnObserverIsNeverRegisteredTwiceAndCanLeave) {
    NotificationCenter center;
    int owner = 0, calls = 0;
    center.addNotification(&owner, "x", [&](const std::string&) { ++calls; });
    center.addNotification(&owner, "x", [&](const std::string&) { calls += 10; });
    center.post("x");
    EXPECT_EQ(calls, 10);
    center.removeNotification(&owner, "x");
    center.post("x");
    EXPECT_EQ(calls, 10);
    EXPECT_EQ(center.observerCount("x"), 0u);
}

TEST(Notifications, AHandlerMayRemoveItselfWhileRunning) {
    NotificationCenter center;
    int owner = 0, calls = 0;
    center.addNotification(&owner, "once", [&](const std::string& name) {
        ++calls;
        center.removeNotification(&owner, name);
    });
    center.post("once");
    center.post("once");
    EXPECT_EQ(calls, 1);
}
