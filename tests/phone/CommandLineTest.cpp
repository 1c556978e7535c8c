#include "CommandLine.h"
#include "Printing.h"

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

std::expected<CommandLine, QString> read(const char* line) {
    return readCommandLine(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(CommandLine, LinkIsTheUsualOneUnlessTold) {
    const auto usual = read("battery 5");
    ASSERT_TRUE(usual.has_value());
    EXPECT_EQ(usual->link.host, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(usual->link.port, 8765);
    EXPECT_FALSE(usual->link.reconnects);

    const auto told = read("--host ::1 --port 99 battery 5");
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->link.host, QStringLiteral("::1"));
    EXPECT_EQ(told->link.port, 99);
}

TEST(CommandLine, PortIsFrom1To65535) {
    EXPECT_TRUE(read("--port 65535 battery 5").has_value());
    for (const char* line : {"--port 0 battery 5", "--port 65536 battery 5", "--port x battery 5"}) {
        EXPECT_FALSE(read(line).has_value()) << line;
    }
}

TEST(CommandLine, SingleCommandIsRead) {
    const auto commandLine = read("notify --title T");
    ASSERT_TRUE(commandLine.has_value());
    const auto* const sending = std::get_if<Sending>(&commandLine->task);
    ASSERT_NE(sending, nullptr);
    EXPECT_EQ(sending->messages.size(), 1);
}

TEST(CommandLine, DemoHasItsOptions) {
    const auto commandLine = read("demo --fast --once --files here --reconnect");
    ASSERT_TRUE(commandLine.has_value());
    const auto* const demo = std::get_if<PlayDemo>(&commandLine->task);
    ASSERT_NE(demo, nullptr);
    EXPECT_TRUE(demo->isFast);
    EXPECT_TRUE(demo->endsAfter);
    EXPECT_EQ(demo->folder, QStringLiteral("here"));
    EXPECT_TRUE(commandLine->link.reconnects);
}

TEST(CommandLine, ReconnectMayStandBeforeTheCommand) {
    const auto commandLine = read("--reconnect receive here");
    ASSERT_TRUE(commandLine.has_value());
    EXPECT_TRUE(commandLine->link.reconnects);
    const auto* const receive = std::get_if<ReceiveFiles>(&commandLine->task);
    ASSERT_NE(receive, nullptr);
    EXPECT_EQ(receive->folder, QStringLiteral("here"));
}

TEST(CommandLine, HelpIsAskedForInSeveralWays) {
    for (const char* line : {"--help", "-h", "help", "notify --help", "demo --help"}) {
        const auto commandLine = read(line);
        ASSERT_TRUE(commandLine.has_value()) << line;
        EXPECT_TRUE(std::holds_alternative<ShowHelp>(commandLine->task)) << line;
    }
}

TEST(CommandLine, MistakesAreErrors) {
    for (const char* line : {"", "dance", "--speed 3 demo", "demo --speed", "demo twice", "receive",
                             "receive a b", "shell x", "battery"}) {
        EXPECT_FALSE(read(line).has_value()) << line;
    }
}

TEST(CommandLine, HelpListsEveryCommand) {
    for (const char* word :
         {"demo", "receive", "shell", "notify", "sms-log", "call-log", "sims", "device-info", "connected",
          "call ", "file", "clipboard", "battery", "remote", "raw"}) {
        EXPECT_TRUE(programHelp().contains(QLatin1String("\n  ") + QLatin1String(word))) << word;
    }
}

} // namespace
} // namespace brenvale::phone
