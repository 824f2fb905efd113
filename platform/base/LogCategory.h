#pragma once

#include <QLoggingCategory>

/// Failures of desktop services. The build names the category.
Q_DECLARE_LOGGING_CATEGORY(PLATFORM_LOG)
