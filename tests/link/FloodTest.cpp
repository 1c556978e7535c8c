#include "fakes/TestServer.h"

using namespace brenvale;

namespace {

constexpr int many = 5000;

/// A phone sends and main does not run.
struct Flood : testing::Test {
    /// Sends for as long as the server reads, at most `many` messages; gives how many it took.
    int sendWithoutMain(const std::shared_ptr<FakeConnection>& sender, std::string_view message) {
        int messages = 0;
        for (; sender->isReceiveArmed() && messages < many; ++messages) {
            sender->deliver(message);
            test.queue.run();
        }
        return messages;
    }

    TestServer test;
    std::shared_ptr<FakeConnection> phone = test.connectPhone();
};

const std::string_view notification = R"({"app":"a"})";

} // namespace

TEST_F(Flood, WaitsForTheMainThread) {
    EXPECT_EQ(sendWithoutMain(phone, notification), 1024);
    EXPECT_TRUE(test.store->items.get().isEmpty());
    test.run();
    EXPECT_TRUE(phone->isReceiveArmed());
    EXPECT_EQ(test.store->items.get().size(), 100);
    EXPECT_EQ(sendWithoutMain(phone, notification), 1024) << "and the next one too";
}

TEST_F(Flood, OfLargeMessagesWaitsSooner) {
    const std::string large = R"({"app":"a","body":")" + std::string(std::size_t{4} << 20, 'x') + "\"}";
    EXPECT_EQ(sendWithoutMain(phone, large), 8);
    test.run();
    EXPECT_TRUE(phone->isReceiveArmed());
}

TEST_F(Flood, HoldsUpItsSenderAlone) {
    const auto other = test.connectPhone();
    sendWithoutMain(phone, notification);
    EXPECT_FALSE(phone->isReceiveArmed());
    ASSERT_TRUE(other->isReceiveArmed());
    EXPECT_EQ(sendWithoutMain(other, notification), 1024);
    test.run();
    EXPECT_TRUE(phone->isReceiveArmed());
    EXPECT_TRUE(other->isReceiveArmed());
}

TEST_F(Flood, WhatLeavesNothingWithMainIsNone) {
    for (const std::string_view message :
         {"{}", "no JSON", R"({"action":"unknown"})", R"({"action":"sms_history"})",
          R"({"action":"file_chunk","fileName":"a","fileData":""})"}) {
        EXPECT_EQ(sendWithoutMain(phone, message), many) << message;
    }
}

TEST_F(Flood, WhatMainHasRunIsNone) {
    for (int message = 0; message < many; ++message) {
        ASSERT_TRUE(phone->isReceiveArmed()) << message;
        phone->deliver(notification);
        test.queue.run();
        test.main.run(); // and what main knows comes back only with the next message
    }
}

TEST_F(Flood, AFileThatStreamsInIsNone) {
    test.receive(R"({"action":"file_transfer_start","fileName":"a","fileSize":80000000})");
    const auto other = test.connectPhone();
    const std::string chunk =
        R"({"action":"file_chunk","fileName":"a","fileData":")" + std::string(16384, 'A') + "\"}";
    EXPECT_EQ(sendWithoutMain(test.phone, chunk), many) << "80 MB";
    EXPECT_TRUE(other->isReceiveArmed());
    test.run();
    EXPECT_EQ(test.store->fileTransfers.get()[0].progress, many * 12288.0 / 80'000'000)
        << "the row caught up";
}

TEST_F(Flood, TheRowOfAFileHasOneReportOnItsWay) {
    test.receive(R"({"action":"file_transfer_start","fileName":"a","fileSize":6})");
    int reports = 0;
    const auto subscription = test.store->fileTransfers.subscribe([&](const auto&) { ++reports; });
    reports = 0;
    sendWithoutMain(test.phone, R"({"action":"file_chunk","fileName":"a","fileData":"AA=="})");
    test.run();
    EXPECT_EQ(reports, 2) << "the first and the latest";
    EXPECT_EQ(test.store->fileTransfers.get()[0].progress, many / 6.0);
}

TEST_F(Flood, AFinishedFileStaysFinishedWhateverReportWasOnItsWay) {
    test.receive(R"({"action":"file_transfer_start","fileName":"a","fileSize":8})");
    for (const std::string_view chunk : {R"({"action":"file_chunk","fileName":"a","fileData":"AA=="})",
                                         R"({"action":"file_chunk","fileName":"a","fileData":"AA=="})",
                                         R"({"action":"file_transfer","fileName":"a","fileData":"AA=="})"}) {
        test.phone->deliver(chunk);
        test.queue.run();
    }
    test.run();
    EXPECT_EQ(test.store->fileTransfers.get()[0].progress, 1.0);
    EXPECT_TRUE(test.store->fileTransfers.get()[0].isCompleted);
}

TEST_F(Flood, EndsWithItsConnection) {
    sendWithoutMain(phone, notification);
    phone->report({Connection::State::failed, "lost"});
    test.run();
    EXPECT_FALSE(phone->isReceiveArmed()) << "nobody reads what is gone";
    EXPECT_EQ(sendWithoutMain(test.connectPhone(), notification), 1024);
}
