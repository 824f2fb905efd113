// Opens the pane once. tools/check counts the instructions of the main thread inside openThePane().
#include "bench/AgentProcess.h"
#include "bench/PaneWindow.h"

#include <QApplication>
#include <QBuffer>
#include <QLabel>
#include <QPixmap>

#include <memory>

namespace {

std::unique_ptr<PaneWindow> window;

/// Exclude the costs of any program with a window, a text and a picture: fonts, style, image plug-ins.
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

// The profiler finds this function by its name.
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
