#include "simulator/picture/Picture.h"

#include "simulator/picture/PictureThread.h"

namespace simulator {
namespace {

constexpr unsigned long EndTimeout = 2000; // ms

} // namespace

Picture::Picture(const PictureSettings &settings)
    : mThread(new PictureThread(settings))
{
    connect(mThread, &PictureThread::failed, this, &Picture::failed);
    mThread->start();
}

Picture::~Picture()
{
    mThread->requestEnd();
    // If the thread hangs, leak it: deleting a running QThread would abort the process.
    if (mThread->wait(EndTimeout))
        delete mThread;
}

void Picture::show(const QString &caption)
{
    mThread->picture().setCaption(caption);
}

} // namespace simulator
