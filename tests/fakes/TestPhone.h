#pragma once

#include "fakes/ModelChanges.h"
#include "fakes/TestServer.h"

#include <utility>
#include <vector>

namespace brenvale {

/// The server over the in-memory platform and a phone that notes what it gets, for the state of one tab.
struct TestPhone : TestServer {
    /// Connects a phone and forgets what it was greeted with.
    void connect() {
        phone = connectPhone();
        phone->sent.clear();
    }

    /// What the phone got since.
    [[nodiscard]] std::vector<QByteArray> takeSent() {
        run();
        return std::exchange(phone->sent, {});
    }
};

} // namespace brenvale
