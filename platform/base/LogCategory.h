#pragma once

#include <QLoggingCategory>

/// What the desktop's services do wrong: "ks7.platform".
Q_DECLARE_LOGGING_CATEGORY(KS7_PLATFORM)
