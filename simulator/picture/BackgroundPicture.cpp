#include "simulator/picture/BackgroundPicture.h"

#include "simulator/picture/Picture.h"

#include <QThread>

namespace simulator {
namespace {

constexpr unsigned long EndPatience = 2000; // ms

} // namespace

BackgroundPicture::BackgroundPicture(const PictureSettings &settings)
    : mThread(new QThread)
    , mPicture(new Picture(settings))
{
    mPicture->moveToThread(mThread);
    QObject::connect(mThread, &QThread::finished, mPicture, &QObject::deleteLater);
    mThread->start();
}

BackgroundPicture::~BackgroundPicture()
{
    mThread->quit();
    if (mThread->wait(EndPatience))
        delete mThread;
}

void BackgroundPicture::prepare()
{
    QMetaObject::invokeMethod(mPicture, &Picture::prepare);
}

void BackgroundPicture::start(const QString &caption)
{
    QMetaObject::invokeMethod(mPicture, [picture = mPicture, caption] { picture->start(caption); });
}

void BackgroundPicture::stop()
{
    QMetaObject::invokeMethod(mPicture, &Picture::stop);
}

} // namespace simulator
