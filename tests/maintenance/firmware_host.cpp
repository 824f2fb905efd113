#include "agent/NotificationNames.h"
#include "platform/base/RunLoop.h"
#include "tests/support/PaneFixture.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstring>

namespace {

constexpr int ForcedCode = 3;

/// Makes the host quit in the way that `word` names, during an update.
void tell(const char *word, PaneFixture &fixture)
{
    if (std::strcmp(word, "quit") == 0)
        QCoreApplication::quit();
    else if (std::strcmp(word, "exit") == 0)
        QCoreApplication::exit(ForcedCode);
    else if (std::strcmp(word, "close") == 0)
        fixture.window.close();
    else if (std::strcmp(word, "quit-event") == 0)
        QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
    else if (std::strcmp(word, "switch-away-and-quit") == 0) {
        fixture.hide();
        QCoreApplication::quit();
    } else if (std::strcmp(word, "agent-dies-and-quit") == 0) {
        fixture.connections->killAgent();
        QCoreApplication::quit();
    }
}

} // namespace

/// A host that quits while the pane waits for a firmware update that never ends. It prints "waited" when the
/// wait has begun, and exits with the code of its event loop.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    PaneFixture fixture;
    fixture.refit = [](platform::Services &services) {
        services.runLoop = platform::makeQtRunLoop();
        services.sheets = platform::makeQtSheetPresenter();
    };
    fixture.show();
    QTimer::singleShot(0, [&] {
        fixture.controller().installFirmware(nullptr);
        fixture.outlets().firmwareContinueButton->click();
        // The pane waits in slices of 10 ms. Quit after several slices, so that the test notices an elapsed
        // slice that replaces the host's exit code.
        QTimer::singleShot(50, [&] {
            std::puts(fixture.controller().firmwareStep() == 1 ? "waited" : "did not wait");
            tell(argc > 1 ? argv[1] : "", fixture);
        });
        fixture.outlets().firmwareContinueButton->click();
    });
    return application.exec();
}
