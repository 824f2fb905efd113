#pragma once

#include <QProcess>
#include <QString>
#include <QTest>

/// A node of the test's own in PipeWire, unplugged at the end.
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
    /// How many pictures it has sent to somebody, or kept back while paused, since it was told to tell.
    int told() { return mTold += static_cast<int>(mProcess.readAll().count('\n')); }
    /// Blocks until it has told of so many more: nothing else of this process's main thread runs.
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
