"""The stand-in agent on this session's bus, played by its script interface.

    agent = stand_in.Agent()
    agent.wait_up()
    agent.setStatus("00-1b-dc-0f-2a-9c", 4)
"""

import contextlib

import dbus

import accessible

BUS_NAME = "com.orvex.KS7AgentServer"
SCRIPT_PATH = "/com/orvex/KS7AgentSimulator"
SCRIPT_INTERFACE = "com.orvex.KS7AgentSimulator"


class Agent:
    """Each operation of the script interface is a method; what the pane asks of the agent is never asked here."""

    def __init__(self):
        self._bus = dbus.SessionBus()

    def is_up(self):
        return self._bus.name_has_owner(BUS_NAME)

    def wait_up(self):
        accessible.wait_until(self.is_up, "the agent on the bus")
        return self

    def wait_gone(self):
        accessible.wait_until(lambda: not self.is_up(), "the end of the agent")

    def __getattr__(self, operation):
        scripted = dbus.Interface(self._bus.get_object(BUS_NAME, SCRIPT_PATH), SCRIPT_INTERFACE)
        return getattr(scripted, operation)

    def die(self):
        """Ends the process where it stands, without an answer."""
        self._end("die")

    def quit_if_up(self):
        if self.is_up():
            self._end("quit")

    def _end(self, operation):
        with contextlib.suppress(dbus.DBusException):
            self.__getattr__(operation)()
        self.wait_gone()
