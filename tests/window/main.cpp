#include <QApplication>

#include <gmock/gmock.h>

#ifdef __SANITIZE_ADDRESS__
/// The toolkit keeps what it draws with until the process ends, and gives none of it back.
extern "C" const char* __asan_default_options() { // NOLINT: the sanitizer's name
    return "detect_leaks=0";
}
#endif

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
