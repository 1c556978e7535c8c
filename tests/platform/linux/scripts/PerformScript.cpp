// perform-script SOURCE...: performs the scripts with the back ends of this desktop, all handed over at once,
// and writes "NUMBER ok" or "NUMBER error: TEXT" for each as it ends. For the tests that bring such a
// desktop.
#include "platform/MainQueue.h"
#include "platform/linux/scripts/LinuxScriptRunner.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace brenvale;

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const auto sources = QCoreApplication::arguments().sliced(1);
    MainQueue queue;
    LinuxScriptRunner runner(queue);
    qsizetype open = sources.size();
    queue.async([&] {
        for (qsizetype number = 0; number < sources.size(); ++number) {
            runner.execute(sources[number], [&open, number](const std::optional<QString>& error) {
                std::printf("%lld %s\n", static_cast<long long>(number),
                            error ? qPrintable(QStringLiteral("error: ") + *error) : "ok");
                std::fflush(stdout);
                if (--open == 0) {
                    QCoreApplication::quit();
                }
            });
        }
    });
    const int status = sources.isEmpty() ? EXIT_FAILURE : QCoreApplication::exec();
    std::_Exit(status); // as the program ends: threads of scripts may still run
}
