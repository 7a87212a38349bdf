#include <gtest/gtest.h>

#include "app/instance/ApplicationService.h"
#include "app/instance/RunningInstance.h"

using namespace kestrelbay;

TEST(NoSessionBus, NobodyIsReached) {
    EXPECT_EQ(RunningInstance::request(actions::kPreferences), RunningInstance::Answer::NoBus);
    EXPECT_EQ(RunningInstance::importRules(QStringLiteral("[]")),
              RunningInstance::ImportAnswer::Nobody);
    EXPECT_EQ(RunningInstance::diagnosticReport(), std::nullopt);
}

TEST(NoSessionBus, ActionsOfTheCommandLineAreCarriedOutHere) {
    int quits = 0;
    ApplicationService service({.activate = {},
                                .actions = {{actions::kQuit, [&quits] { ++quits; }}},
                                .runRule = {},
                                .report = {},
                                .importRules = {}});
    EXPECT_FALSE(service.registerOnSessionBus());
    service.performAction(actions::kAbout);
    EXPECT_EQ(quits, 0);
    service.performAction(actions::kQuit);
    EXPECT_EQ(quits, 1);
}
