#include "tests/fakes/FakeCapture.h"

FakeCaptureDevice::FakeCaptureDevice(Journal journal, QString uniqueID, QString name)
    : mJournal(std::move(journal))
    , mUniqueID(std::move(uniqueID))
    , mName(std::move(name))
{
}

bool FakeCaptureDevice::open(std::optional<platform::CaptureError> &error)
{
    note(mJournal, QStringLiteral("open device"));
    mOpen = opens;
    if (!opens)
        error = openError;
    return opens;
}

void FakeCaptureDevice::close()
{
    note(mJournal, QStringLiteral("close device"));
    mOpen = false;
}

bool FakeCaptureSession::addInput(const std::shared_ptr<platform::CaptureDeviceInput> &newInput,
                                  std::optional<platform::CaptureError> &error)
{
    note(mJournal, QStringLiteral("add input"));
    if (accepts)
        input = newInput;
    else
        error = addError;
    return accepts;
}

void FakeCaptureSession::startRunning()
{
    note(mJournal, QStringLiteral("start session"));
    mRunning = true;
}

void FakeCaptureSession::stopRunning()
{
    note(mJournal, QStringLiteral("stop session"));
    mRunning = false;
}

void FakeCaptureSession::deliverFrame(const QImage &frame)
{
    if (mFrameHandler)
        mFrameHandler(frame);
}

std::vector<std::shared_ptr<platform::CaptureDevice>> FakeCapture::videoInputDevices()
{
    note(mJournal, QStringLiteral("list devices"));
    return {devices.begin(), devices.end()};
}

std::shared_ptr<platform::CaptureSession> FakeCapture::makeSession()
{
    note(mJournal, QStringLiteral("make session"));
    auto session = std::make_shared<FakeCaptureSession>(mJournal);
    session->accepts = sessionsAccept;
    session->addError = addError;
    sessions.push_back(session);
    return session;
}

std::shared_ptr<FakeCaptureDevice> FakeCapture::addDevice(const QString &uniqueID, const QString &name)
{
    devices.push_back(std::make_shared<FakeCaptureDevice>(mJournal, uniqueID, name));
    return devices.back();
}
