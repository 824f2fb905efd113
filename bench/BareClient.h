#pragma once

#include <QString>
#include <QStringList>

struct sd_bus;
struct sd_bus_message;

/// A plain sd-bus client, with which the pane's refresh is compared. It receives the same notification as the
/// pane, makes the same calls one after the other and reads every reply completely.
class BareClient {
public:
    BareClient();
    ~BareClient();
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    /// Broadcasts a notification without waiting.
    void post(const QString &notification);
    /// Waits until the notification that this client has posted comes back to it.
    void hear();
    /// Makes the calls. Each is a method, or a method and a string argument after a space. Returns all
    /// strings of the replies.
    QStringList call(const QStringList &calls);

private:
    static int heard(sd_bus_message *message, void *client, void *error);
    static void read(sd_bus_message *answer, QStringList *strings);

    sd_bus *mBus = nullptr;
    bool mHeard = false;
};
