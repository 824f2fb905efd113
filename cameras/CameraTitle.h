#pragma once

class KS7Cam;
class QString;

/// Returns "friendly name (camera ID)", because several cameras may have the same name. Without an ID,
/// returns the name alone.
QString cameraTitle(const KS7Cam &camera);

/// Returns "title, status", or the title alone for a camera whose status has no text.
QString titleAndStatus(const QString &title, const KS7Cam &camera);
