#include "platform/base/LogCategory.h"

Q_LOGGING_CATEGORY(PLATFORM_LOG, PLATFORM_LOG_CATEGORY)
