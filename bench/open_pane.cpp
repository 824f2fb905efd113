// Opens the pane once. bench/instructions counts the main thread's instructions inside openThePane().
#include "bench/AgentProcess.h"
#include "bench/PaneWindow.h"

#include <QApplication>
#include <QBuffer>
#include <QLabel>
#include <QPixmap>

#include <memory>

namespace {

std::unique_ptr<PaneWindow> window;

/// Loads fonts, style and image plug-ins before the counting, because any program with a window, a text and
/// an image needs them.
void warmUp()
{
    QLabel label(QStringLiteral("KS-7"));
    label.show();
    QCoreApplication::processEvents();
    label.grab();
    QBuffer picture;
    picture.open(QIODevice::ReadWrite);
    QImage(1, 1, QImage::Format_RGB32).save(&picture, "PNG");
    QImage::fromData(picture.data());
}

} // namespace

extern "C" {

// callgrind starts counting at this function. It finds the function by its name, so the name must stay
// unmangled.
[[gnu::noinline]] void openThePane()
{
    window = std::make_unique<PaneWindow>();
    window->show();
    window->paint();
}
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const AgentProcess agent;
    warmUp();
    openThePane();
    window.reset();
    return 0;
}
