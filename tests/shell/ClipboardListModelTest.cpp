#include "shell/ClipboardListModel.h"
#include "fakes/ModelChanges.h"
#include "records/HistoryStore.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

TEST(ClipboardListModel, FollowsTheStore) {
    HistoryStore store;
    ClipboardListModel model(store);
    std::vector<std::string> changes;
    recordChanges(model, changes);
    store.addClipboard(QStringLiteral("one"));
    store.addClipboard(QStringLiteral("two"));
    store.clearClipboard();
    EXPECT_THAT(changes, ElementsAre("insert 0-0", "insert 0-0", "remove 0-1"));
}
