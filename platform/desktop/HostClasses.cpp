#include "platform/desktop/HostClasses.h"

#include <QCoreApplication>

namespace platform {
namespace {

/// Searches the children of QApplication. A host publishes an object by making it such a child, with its
/// class name as objectName.
class ApplicationChildren final : public HostClasses {
public:
    QObject *classNamed(const QString &name) override
    {
        auto *application = QCoreApplication::instance();
        if (!application || name.isEmpty())
            return nullptr;
        return application->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
    }
};

} // namespace

std::shared_ptr<HostClasses> makeHostClasses()
{
    return std::make_shared<ApplicationChildren>();
}

} // namespace platform
