#pragma once

#include <QString>
#include <QStringList>

struct sd_bus;
struct sd_bus_message;

/// The reference for a refresh: a plain sd-bus client that receives the notification, makes the same calls in
/// sequence and reads every reply completely.
class BareClient {
public:
    BareClient();
    ~BareClient();
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    /// Broadcasts the notification without waiting for a reply.
    void post(const QString &notification);
    /// Waits for this client's own notification.
    void hear();
    /// Makes the calls, each a method with an optional string argument. Returns all strings of the replies.
    QStringList call(const QStringList &calls);

private:
    static int heard(sd_bus_message *message, void *client, void *error);
    static void read(sd_bus_message *answer, QStringList *strings);

    sd_bus *mBus = nullptr;
    bool mHeard = false;
};
