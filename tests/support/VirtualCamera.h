#pragma once

#include <QProcess>
#include <QString>
#include <QTest>

/// Runs virtual_camera.cpp, a process with a video node in PipeWire. The destructor kills the process.
class VirtualCamera {
public:
    VirtualCamera(const QString &nodeName, const QString &description, QRgb color, const QString &format = {})
    {
        QStringList arguments{nodeName, description, QStringLiteral("0x") + QString::number(color, 16)};
        if (!format.isEmpty())
            arguments.append(format);
        mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        mProcess.start(QStringLiteral(VIRTUAL_CAMERA), arguments);
        mProcess.waitForStarted();
    }
    ~VirtualCamera() { unplug(); }
    VirtualCamera(const VirtualCamera &) = delete;
    VirtualCamera &operator=(const VirtualCamera &) = delete;

    void tell(const QString &command)
    {
        mProcess.write(command.toUtf8() + '\n');
        mProcess.waitForBytesWritten();
    }
    /// The number of frames that the camera has reported since tell("tell"). Frames withheld during a pause
    /// count too.
    int told() { return mTold += static_cast<int>(mProcess.readAll().count('\n')); }
    /// Blocks the main thread, without an event loop, until the camera has reported `pictures` further
    /// frames.
    void waitUntilTold(int pictures)
    {
        for (const int end = told() + pictures; told() < end;)
            QVERIFY(mProcess.waitForReadyRead());
    }
    void unplug()
    {
        mProcess.kill();
        mProcess.waitForFinished();
    }

private:
    QProcess mProcess;
    int mTold = 0;
};
