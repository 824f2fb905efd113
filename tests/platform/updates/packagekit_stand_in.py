#!/usr/bin/python3
"""A package service for the system bus, for tests. Its one argument, a JSON object, sets its replies:

  owners    {file: package id}      the result of SearchFiles
  updates   [[info, package id]]    the result of GetUpdates
  install   "done", "refused", "not-authorized", "cancelled", "failed", "vanish" or "silent"
  stranger  true: another connection sends the caller a forged update and a forged end of the transaction
  query     "failed": every query fails; "vanish": the service exits during a query; "silent": queries never end

The service prints "ready" when it has its bus name, then one line for each call.
"""

import json
import sys

import dbus
import dbus.lowlevel
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.PackageKit"
TRANSACTION = NAME + ".Transaction"
SUCCESS, FAILED, CANCELLED = 1, 2, 3
INSTALLED = 1
NO_NETWORK, NOT_AUTHORIZED = 2, 48


class RefusedByPolicy(dbus.DBusException):
    _dbus_error_name = TRANSACTION + ".RefusedByPolicy"


def tell(*words):
    print(*words, flush=True)


class Transaction(dbus.service.Object):
    def __init__(self, bus, path, behaviour):
        super().__init__(bus, path)
        self.behaviour = behaviour

    def end(self, answers=(), code=SUCCESS):
        def send():
            for info, package in answers:
                self.Package(info, package, "")
            self.Finished(code, 1)
        GLib.idle_add(send)

    def fail(self, error, details):
        def send():
            self.ErrorCode(error, details)
            self.Finished(FAILED, 1)
        GLib.idle_add(send)

    @dbus.service.method(TRANSACTION, in_signature="as")
    def SetHints(self, hints):
        tell("SetHints", *sorted(hint for hint in hints if not hint.startswith("locale=")))

    @dbus.service.method(TRANSACTION, in_signature="tas")
    def SearchFiles(self, filters, values):
        tell("SearchFiles", int(filters), *values)
        getattr(self, "query_" + self.behaviour.get("query", "done"))(values)

    def query_done(self, values):
        owners = self.behaviour.get("owners", {})
        self.end([(INSTALLED, owners[value]) for value in values if value in owners])

    def query_failed(self, _values):
        self.fail(NO_NETWORK, "no network")

    def query_vanish(self, _values):
        GLib.idle_add(sys.exit)

    def query_silent(self, _values):
        pass

    def forge(self, caller):
        """Sends forged signals of this transaction from another connection: each one as a broadcast and directly to the
        caller."""
        stranger = dbus.SystemBus(private=True)
        for destination in (None, caller):
            for member, signature, values in (("Package", "uss", (5, "ks7-preferences;6.6-6;amd64;forged", "")),
                                              ("Finished", "uu", (SUCCESS, 1))):
                signal = dbus.lowlevel.SignalMessage(self.__dbus_object_path__, TRANSACTION, member)
                signal.append(signature=signature, *values)
                if destination:
                    signal.set_destination(destination)
                stranger.send_message(signal)
        stranger.flush()
        # Wait for any reply on this connection, which proves that the bus has delivered the earlier signals.
        stranger.list_names()

    @dbus.service.method(TRANSACTION, in_signature="t", sender_keyword="caller")
    def GetUpdates(self, filters, caller):
        tell("GetUpdates", int(filters))
        if self.behaviour.get("stranger"):
            self.forge(caller)
        return self.end(self.behaviour.get("updates", []))

    @dbus.service.method(TRANSACTION, in_signature="tas")
    def UpdatePackages(self, flags, packages):
        tell("UpdatePackages", int(flags), *packages)
        getattr(self, "install_" + self.behaviour.get("install", "done").replace("-", "_"))()

    def install_done(self):
        GLib.idle_add(lambda: self.PropertiesChanged(TRANSACTION, {"Percentage": dbus.UInt32(40)}, []))
        self.end()

    def install_refused(self):
        raise RefusedByPolicy("refused")

    def install_not_authorized(self):
        self.fail(NOT_AUTHORIZED, "not authorized")

    def install_cancelled(self):
        self.end(code=CANCELLED)

    def install_failed(self):
        self.fail(NO_NETWORK, "There is no <b>network</b>.")

    def install_vanish(self):
        GLib.idle_add(sys.exit)

    def install_silent(self):
        pass

    @dbus.service.signal(TRANSACTION, signature="uss")
    def Package(self, info, package, summary):
        pass

    @dbus.service.signal(TRANSACTION, signature="us")
    def ErrorCode(self, code, details):
        pass

    @dbus.service.signal(TRANSACTION, signature="uu")
    def Finished(self, code, runtime):
        pass

    @dbus.service.signal(dbus.PROPERTIES_IFACE, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):
        pass


class Service(dbus.service.Object):
    def __init__(self, bus, behaviour):
        super().__init__(bus, "/org/freedesktop/PackageKit")
        self.bus = bus
        self.behaviour = behaviour
        self.transactions = []

    @dbus.service.method(NAME, out_signature="o")
    def CreateTransaction(self):
        path = f"/{len(self.transactions) + 1}_stand_in"
        self.transactions.append(Transaction(self.bus, path, self.behaviour))
        return dbus.ObjectPath(path)


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    service = Service(bus, json.loads(sys.argv[1]))
    name = dbus.service.BusName(NAME, bus, do_not_queue=True)
    tell("ready")
    GLib.MainLoop().run()
    del service, name


if __name__ == "__main__":
    main()
