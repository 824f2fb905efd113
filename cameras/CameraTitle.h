#pragma once

class KS7Cam;
class QString;

/// "friendly name (camera ID)": tells cameras of the same name apart. Without an ID, the name alone.
QString cameraTitle(const KS7Cam &camera);
