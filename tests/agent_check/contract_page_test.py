"""Tests that the contract's page, docs/AGENT.md, agrees with the interface files and with the code."""

import pathlib
import re
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = (ROOT / "docs/AGENT.md").read_text()
INTERFACES = {"### Camera side": "com.orvex.KS7DeviceControllerProxy",
              "### USB side": "com.orvex.TernUSBCommandControllerProxy"}


def rows(heading):
    """Returns the cells of the first table below a heading, without the table's two header lines."""
    below = PAGE.split("\n" + heading, 1)[1]
    table = re.search(r"^\|.*?(?=\n[^|]|\Z)", below, re.MULTILINE | re.DOTALL)[0]
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in table.splitlines()[2:]]


def code(cell):
    return re.findall(r"`([^`]+)`", cell)


def constants(header, namespace=None):
    """Returns the values of the string constants in a header file, in their order."""
    text = (ROOT / header).read_text()
    if namespace:
        text = re.search(rf"namespace {namespace} {{(.*?)}} // namespace", text, re.DOTALL)[1]
    return re.findall(r'inline const QString \w+ = QStringLiteral\("([^"]+)"\);', text)


def declared(interface):
    """Returns the name, the input arguments and the output arguments of each operation. An argument is a pair of type
    and name."""
    def arguments(method, direction):
        return [(arg.get("type"), arg.get("name")) for arg in method.iter("arg") if arg.get("direction") == direction]
    tree = xml.etree.ElementTree.parse(ROOT / "agent" / f"{interface}.xml")
    return [(method.get("name"), arguments(method, "in"), arguments(method, "out")) for method in tree.iter("method")]


def told(cell):
    return [] if cell == "–" else [tuple(re.fullmatch(r"`(\S+)` (\w+)", part).groups()) for part in cell.split(", ")]


class ContractPage(unittest.TestCase):
    def test_the_operations_are_those_of_the_declarations(self):
        for heading, interface in INTERFACES.items():
            page = [(code(row[0])[0], told(row[1]), told(row[2])) for row in rows(heading)]
            self.assertEqual(page, declared(interface))

    def test_each_operation_without_a_result_loses_nothing_without_a_reply(self):
        for heading in INTERFACES:
            for name, _, out, _, without in rows(heading):
                self.assertEqual(out == "–", without == "–", name)

    def test_the_notifications_are_those_of_the_code(self):
        text = (ROOT / "agent/NotificationNames.h").read_text()
        # Blank lines separate the notifications from the agent and those to it.
        groups = [re.findall(r'"(KS7\w+)"', block) for block in text.split("\n\n")]
        from_agent, to_agent = filter(None, groups)
        self.assertEqual([code(row[0])[0] for row in rows("### From the agent")], from_agent)
        both = from_agent[-1]
        self.assertEqual([code(row[0])[0] for row in rows("### To the agent")], [*to_agent, both])
        self.assertEqual((len(from_agent), len(to_agent) + 1), (18, 6))

    def test_the_user_info_has_the_keys_of_the_code(self):
        page = {key for table in ("### From the agent", "### To the agent") for row in rows(table) for key in code(row[1])}
        self.assertEqual(page, set(constants("agent/NotificationNames.h", "UserInfoKeys")))

    def test_names_and_paths_are_those_of_the_code(self):
        table = {row[0]: [code(cell)[0] for cell in row[1:]] for row in rows("## Names")}
        registered = constants("agent/RemoteNames.h", "RemoteNames")
        self.assertEqual(table["Bus name"], [f"com.orvex.{name}" for name in registered])
        self.assertEqual(table["Object path"], [f"/com/orvex/{name}" for name in registered])
        self.assertEqual(table["Interface"], list(INTERFACES.values()))

    def test_records_and_preferences_have_the_keys_of_the_code(self):
        self.assertEqual([code(row[0])[0] for row in rows("## Calls")], constants("agent/RemoteNames.h", "RecordKeys"))
        self.assertEqual([code(row[0])[0] for row in rows("## Preferences file")],
                         constants("agent/AgentContract.h", "PreferenceKeys"))

    def test_the_picture_has_the_name_that_the_pane_looks_for(self):
        self.assertEqual(constants("agent/AgentContract.h", "PictureNode"), ["KS-7 Wireless Webcam"])
        self.assertIn('`node.name` "KS-7 Wireless Webcam"', PAGE)


if __name__ == "__main__":
    unittest.main(verbosity=2)
