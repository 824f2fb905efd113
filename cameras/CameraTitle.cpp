#include "cameras/CameraTitle.h"

#include "cameras/KS7Cam.h"
#include "cameras/SanitizedLine.h"

#include <QCoreApplication>

QString cameraTitle(const KS7Cam &camera)
{
    const QString name = sanitizedLine(camera.friendlyName());
    const QString id = sanitizedLine(camera.cameraIDString());
    return id.isEmpty() ? name
                        : QCoreApplication::translate("KS7Cam", "%1 (%2)", "camera name, ID").arg(name, id);
}

QString titleAndStatus(const QString &title, const KS7Cam &camera)
{
    const QString status = camera.statusString();
    return status.isEmpty()
        ? title
        : QCoreApplication::translate("KS7Cam", "%1, %2", "camera name, status").arg(title, status);
}
