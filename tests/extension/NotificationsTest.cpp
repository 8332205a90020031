#include "support/Notifications.h"

#include <gtest/gtest.h>

using namespace px;

TEST(Notifications, HandlerNamesFollowTheDottedParts) {
    EXPECT_EQ(selWithName("app.color.changed"), "handleSignal_color_changed:");
    EXPECT_EQ(selWithName("plain"), "handleSignal:");
    EXPECT_EQ(selWithName("a.b.c.d"), "handleSignal:");
}

TEST(Notifications, AnObserverIsRegisteredOnceAndMayLeaveEvenFromItsOwnHandler) {
    NotificationCenter center;
    int owner = 0, calls = 0;
    center.addNotification(&owner, "x", [&](const std::string&) { ++calls; });
    center.addNotification(&owner, "x", [&](const std::string& name) {
        calls += 10;
        center.removeNotification(&owner, name);
    });
    center.post("x");
    center.post("x");
    EXPECT_EQ(calls, 10);
    EXPECT_EQ(center.observerCount("x"), 0u);
}
