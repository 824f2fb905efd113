#pragma once

#include <QLoggingCategory>

/// The log category for failures of desktop services. The build defines its name as PLATFORM_LOG_CATEGORY.
Q_DECLARE_LOGGING_CATEGORY(PLATFORM_LOG)
