#include "fakes/QmlWarnings.h"
#include "fakes/Sanitized.h"

#include <QApplication>

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

/// Fails a test during which QML complained.
class WarningsFail final : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        for (const auto& warning : QmlWarnings::take()) {
            ADD_FAILURE() << warning.toStdString();
        }
    }
};

} // namespace

#ifdef BRENVALE_SANITIZED
/// The toolkit keeps what it draws with until the process ends, and gives none of it back.
extern "C" const char* __asan_default_options() { // NOLINT: the sanitizer's name
    return "detect_leaks=0";
}
#endif

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QmlWarnings::collect();
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    auto* printer = listeners.Release(listeners.default_result_printer());
    listeners.Append(new WarningsFail); // before the printer, which tells how the test ended
    listeners.Append(printer);
    return RUN_ALL_TESTS();
}
