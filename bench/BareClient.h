#pragma once

#include <QString>
#include <QStringList>

struct sd_bus;
struct sd_bus_message;

/// The peer of a refresh: a plain sd-bus client that hears the notification, makes the same calls one after
/// the other and reads every answer to its end.
class BareClient {
public:
    BareClient();
    ~BareClient();
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    /// Broadcasts the notification and does not wait for anybody.
    void post(const QString &notification);
    /// Waits for the notification that this client has posted.
    void hear();
    /// Makes the calls, each a method and perhaps its string argument; every string of the answers.
    QStringList call(const QStringList &calls);

private:
    static int heard(sd_bus_message *message, void *client, void *error);
    static void read(sd_bus_message *answer, QStringList *strings);

    sd_bus *mBus = nullptr;
    bool mHeard = false;
};
