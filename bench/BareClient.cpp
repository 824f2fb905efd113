#include "bench/BareClient.h"

#include "agent/KS7DeviceControllerProxy.h"
#include "agent/RemoteNames.h"

#include <systemd/sd-bus.h>

#include <cstdint>

namespace {

const QByteArray AgentName = RemoteNames::busName(RemoteNames::AgentServer).toLatin1();
const QByteArray AgentPath = RemoteNames::objectPath(RemoteNames::AgentServer).toLatin1();
const QByteArray Interface = KS7DeviceControllerProxy::InterfaceName.toLatin1();
const QByteArray CenterPath = RemoteNames::NotificationPath.toLatin1();
const QByteArray CenterInterface = RemoteNames::NotificationInterface.toLatin1();

bool isContainer(char type)
{
    return type == SD_BUS_TYPE_ARRAY || type == SD_BUS_TYPE_VARIANT || type == SD_BUS_TYPE_STRUCT
        || type == SD_BUS_TYPE_DICT_ENTRY;
}

} // namespace

BareClient::BareClient()
{
    sd_bus_open_user(&mBus);
    sd_bus_match_signal(
        mBus, nullptr, nullptr, CenterPath.constData(), CenterInterface.constData(), nullptr,
        [](sd_bus_message *message, void *client, sd_bus_error *error) {
            return heard(message, client, error);
        },
        this);
}

BareClient::~BareClient()
{
    sd_bus_flush_close_unref(mBus);
}

int BareClient::heard(sd_bus_message *, void *client, void *)
{
    static_cast<BareClient *>(client)->mHeard = true;
    return 0;
}

void BareClient::post(const QString &notification)
{
    mHeard = false;
    sd_bus_emit_signal(mBus, CenterPath.constData(), CenterInterface.constData(),
                       notification.toLatin1().constData(), "a{sv}", 0);
    sd_bus_flush(mBus);
}

void BareClient::hear()
{
    while (!mHeard) {
        if (sd_bus_process(mBus, nullptr) == 0)
            sd_bus_wait(mBus, UINT64_MAX);
    }
}

QStringList BareClient::call(const QStringList &calls)
{
    QStringList strings;
    for (const auto &words : calls) {
        const QByteArray method = words.section(QLatin1Char(' '), 0, 0).toLatin1();
        const QByteArray argument = words.section(QLatin1Char(' '), 1).toUtf8();
        sd_bus_message *answer = nullptr;
        sd_bus_call_method(mBus, AgentName.constData(), AgentPath.constData(), Interface.constData(),
                           method.constData(), nullptr, &answer, argument.isEmpty() ? "" : "s",
                           argument.constData());
        if (answer)
            read(answer, &strings);
        sd_bus_message_unref(answer);
    }
    return strings;
}

void BareClient::read(sd_bus_message *answer, QStringList *strings)
{
    char type = 0;
    const char *contents = nullptr;
    while (sd_bus_message_peek_type(answer, &type, &contents) > 0) {
        if (isContainer(type)) {
            sd_bus_message_enter_container(answer, type, contents);
            read(answer, strings);
            sd_bus_message_exit_container(answer);
        } else if (type == SD_BUS_TYPE_STRING) {
            const char *text = nullptr;
            sd_bus_message_read_basic(answer, type, &text);
            strings->append(QString::fromUtf8(text));
        } else {
            std::uint64_t number = 0;
            sd_bus_message_read_basic(answer, type, &number);
        }
    }
}
