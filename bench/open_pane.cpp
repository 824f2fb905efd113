// Opens the pane once. tools/check has its instructions counted: those of the main thread between the
// beginning and the end of openThePane().
#include "bench/AgentProcess.h"
#include "bench/PaneWindow.h"

#include <QApplication>
#include <QBuffer>
#include <QLabel>
#include <QPixmap>

#include <memory>

namespace {

std::unique_ptr<PaneWindow> window;

/// What any program with a text and a picture in a window takes is none of the pane's: fonts, style, the
/// first window, and as many image plug-ins as there happen to be.
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

// Its name is the profiler's handle on it.
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
