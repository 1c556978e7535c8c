#include "platform/linux/scripts/LinuxScriptRunner.h"

#include "SharedQueue.h"

#include <gmock/gmock.h>

#include <cstdlib>

using namespace brenvale;

namespace {

/// The runner where no program opens anything and no sound server runs.
struct LinuxScriptRunnerTest : testing::Test {
    LinuxScriptRunnerTest() { setenv("PULSE_SERVER", "unix:/nonexistent/pulse", 1); }
    ~LinuxScriptRunnerTest() override { unsetenv("PULSE_SERVER"); }

    void execute(const QString& source) {
        runner.execute(source, [this, source](const std::optional<QString>& error) {
            ended.append(source);
            errors.append(error.value_or(QString()));
        });
    }

    void waitFor(qsizetype count) {
        while (ended.size() < count) {
            queue.runOne();
        }
    }

    SharedQueue queue;
    LinuxScriptRunner runner{queue};
    QStringList ended;
    QStringList errors;
};

const auto unknown = QStringLiteral("do shell script \"id\"");
const auto louder = QStringLiteral("set volume output volume (output volume of (get volume settings) + 5)");
const auto quieter = QStringLiteral("set volume output volume (output volume of (get volume settings) - 5)");

QString opening(int number) {
    return QStringLiteral("open location \"nothing-opens-this:%1\"").arg(number);
}

} // namespace

TEST_F(LinuxScriptRunnerTest, WhatIsNoScriptEndsWithAnErrorAfterTheReturn) {
    execute(unknown);
    EXPECT_TRUE(ended.isEmpty());
    waitFor(1);
    EXPECT_EQ(ended, QStringList{unknown});
    EXPECT_FALSE(errors.constFirst().isEmpty());
}

TEST_F(LinuxScriptRunnerTest, ScriptsEndInTheirOrder) {
    const QStringList sources{louder, opening(1), quieter, opening(2), louder};
    for (const auto& source : sources) {
        execute(source);
    }
    EXPECT_TRUE(ended.isEmpty());
    waitFor(sources.size());
    EXPECT_EQ(ended, sources);
    EXPECT_FALSE(errors.contains(QString()));
}

TEST_F(LinuxScriptRunnerTest, AnotherScriptMayComeWhereOneEnds) {
    runner.execute(louder, [this](const std::optional<QString>&) { execute(opening(1)); });
    waitFor(1);
    EXPECT_EQ(ended, QStringList{opening(1)});
}

TEST_F(LinuxScriptRunnerTest, WhoOpensTooManyLocationsIsToldOfEachThatIsNotOpened) {
    constexpr int count = 10'000;
    for (int i = 0; i < count; ++i) {
        execute(opening(i));
    }
    waitFor(count);
    EXPECT_EQ(errors.count(QStringLiteral("Too many locations were opened just now.")), count - 10);
    EXPECT_EQ(errors.count(QStringLiteral("No program opens x-scheme-handler/nothing-opens-this.")), 10);
}

TEST_F(LinuxScriptRunnerTest, TooManyThatWaitAreToldAndTheFirstAreDone) {
    constexpr int count = 1'000;
    for (int i = 0; i < count; ++i) {
        execute(louder);
    }
    waitFor(count);
    EXPECT_EQ(errors.count(QStringLiteral("Too many scripts are waiting.")), count - 100);
    execute(louder); // and then there is room again
    waitFor(count + 1);
    EXPECT_NE(errors.constLast(), QStringLiteral("Too many scripts are waiting."));
}
