#!/usr/bin/python3
"""Generates the C++ classes of a remote interface: remote_interface.py XML FOLDER

For an interface com.orvex.ThingProxy it writes three headers:
  ThingProxy.h    the interface. Its operations do nothing, so an object of this class is a nil proxy
  ThingCaller.h   implements the interface by remote calls, see agent/RemoteCaller.h
  ThingAdaptor.h  serves an object of the interface on the bus, see agent/CallHandler.h

The XML comment before an operation becomes its documentation in C++. Annotations add to the D-Bus signature:
  org.qtproject.QtDBus.QtTypeName.In0 (or .Out0)  of a method: the C++ type that QtDBus marshals, if TYPES has none
  com.orvex.Type                                  of an argument: its type in ThingProxy, if not the marshalled type
  com.orvex.Slow                                  of a method: it returns an error code and has a timeout of 30 s
"""

import pathlib
import sys
import textwrap
import xml.etree.ElementTree as ElementTree

TYPES = {"b": "bool", "i": "int", "t": "qulonglong", "d": "double", "s": "QString", "as": "QStringList"}
VALUES = {"bool", "int", "qulonglong", "double", "std::uint64_t", "float"}
# Functions that convert a type to the type that QtDBus marshals, and back. All other types are converted by
# static_cast.
CONVERSIONS = {"std::optional<CameraRecord>": ("dictionaryFromRecord", "recordFromDictionary")}


def annotation(node, name):
    return next((note.get("value") for note in node.findall("annotation") if note.get("name") == name), None)


def arguments(method, direction):
    nodes = [node for node in method.findall("arg") if node.get("direction") == direction]
    return [Argument(method, node, f"{direction.title()}{number}") for number, node in enumerate(nodes)]


def parameter(cpp_type, name):
    return f"{cpp_type} {name}" if cpp_type in VALUES else f"const {cpp_type} &{name}"


def boxed(values):
    return f"QVariantList{{{', '.join(f'QVariant::fromValue({value})' for value in values)}}}"


class Argument:
    def __init__(self, method, node, place):
        self.name = node.get("name")
        self.wire = annotation(method, f"org.qtproject.QtDBus.QtTypeName.{place}") or TYPES.get(node.get("type"))
        if not self.wire:
            sys.exit(f"{method.get('name')}: no C++ type for {node.get('type')}; annotate the method with its QtTypeName")
        self.type = annotation(node, "com.orvex.Type") or self.wire

    def sent(self, value):
        return self.converted(value, CONVERSIONS.get(self.type, [f"static_cast<{self.wire}>"])[0])

    def received(self, value):
        return self.converted(value, CONVERSIONS.get(self.type, [f"static_cast<{self.type}>"])[-1])

    def converted(self, value, function):
        return value if self.type == self.wire else f"{function}({value})"


class Operation:
    def __init__(self, method, documentation):
        self.name = method.get("name")
        self.is_slow = annotation(method, "com.orvex.Slow") is not None
        self.documentation = [f"/// {line}" for line in textwrap.wrap(" ".join(documentation.split()), 110)]
        self.inputs, self.outputs = arguments(method, "in"), arguments(method, "out")
        # A C++ function returns the result of an operation with one result. Several results are written through pointers.
        self.returned = self.outputs[0] if len(self.outputs) == 1 else None
        self.pointers = [] if self.returned else self.outputs
        parameters = [parameter(a.type, a.name) for a in self.inputs] + [f"{a.type} *{a.name}" for a in self.pointers]
        self.signature = f"{self.returned.type if self.returned else 'void'} {self.name}({', '.join(parameters)})"

    def in_proxy(self):
        return [*self.documentation, f"virtual {self.signature} {{ {'return {}; ' if self.returned else ''}}}"]

    def in_caller(self):
        call = f'(QStringLiteral("{self.name}"), {boxed(a.sent(a.name) for a in self.inputs)})'
        return [f"{self.signature} override", "{",
                *(f"    {line}" for line in self.call(call)), "}"]

    def call(self, call):
        if self.is_slow:
            return [f"return mRemote.askSlowly{call};"]
        if self.returned:
            return [f"return {self.returned.received(f'mRemote.ask<{self.returned.wire}>{call}')};"]
        if not self.outputs:
            return [f"mRemote.tell{call};"]
        return [f"const auto reply = mRemote.call<{', '.join(a.wire for a in self.outputs)}>{call};",
                "if (!reply)", "    return;",
                *(f"*{a.name} = {a.received(f'reply->argumentAt<{i}>()')};" for i, a in enumerate(self.outputs))]

    def in_adaptor(self):
        parameters = [parameter(a.wire, a.name) for a in self.inputs] + ["const QDBusMessage &call"]
        return [f"void {self.name}({', '.join(parameters)})", "{",
                f"    mHandler.handle(call, {boxed(a.name for a in self.inputs)}, [=, this] {{",
                *(f"        {line}" for line in self.work()), "    });", "}"]

    def work(self):
        inputs = [a.received(a.name) for a in self.inputs]
        call = f"mObject.{self.name}({', '.join(inputs + [f'&{a.name}' for a in self.pointers])})"
        if self.returned:
            return [f"return {boxed([self.returned.sent(call)])};"]
        return [*(f"{a.type} {a.name} = {{}};" for a in self.pointers), f"{call};",
                f"return {boxed(a.sent(a.name) for a in self.pointers)};"]


def operations_of(interface):
    documentation = ""
    for node in interface:
        if node.tag is ElementTree.Comment:
            documentation = node.text
        elif node.tag == "method":
            yield Operation(node, documentation)
            documentation = ""


def introspection(interface):
    """Returns the XML of the interface as C++ string literals. The adaptor returns it for Introspect."""
    for comment in [node for node in interface if node.tag is ElementTree.Comment]:
        interface.remove(comment)
    lines = ElementTree.tostring(interface, encoding="unicode").split("\n")
    return "\n".join('        "{}\\n"'.format(line.replace('"', '\\"')) for line in lines if line.strip())


PROXY = """#include "agent/WireTypes.h"

/// The operations of a remote interface. This class is the nil proxy: they do nothing.
class {name}Proxy {{
public:
    static inline const QString InterfaceName = QStringLiteral("{interface}");

    virtual ~{name}Proxy() = default;

{operations}
}};
"""
CALLER = """#include "agent/{name}Proxy.h"
#include "agent/RemoteCaller.h"

class {name}Caller final : public {name}Proxy {{
public:
    explicit {name}Caller(std::shared_ptr<platform::DBusRootProxy> root)
        : mRemote(std::move(root), InterfaceName)
    {{
    }}

{operations}

private:
    RemoteCaller mRemote;
}};
"""
ADAPTOR = """#include "agent/CallHandler.h"
#include "agent/{name}Proxy.h"

#include <QDBusAbstractAdaptor>

class {name}Adaptor final : public QDBusAbstractAdaptor {{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "{interface}")
    Q_CLASSINFO("D-Bus Introspection",
{introspection})
public:
    /// `parent` is the object on the bus. The other two must outlive it.
    {name}Adaptor(QObject *parent, {name}Proxy &object, CallHandler &handler)
        : QDBusAbstractAdaptor(parent)
        , mObject(object)
        , mHandler(handler)
    {{
    }}

public Q_SLOTS:
{operations}

private:
    {name}Proxy &mObject;
    CallHandler &mHandler;
}};
"""


def main(declaration, folder):
    parser = ElementTree.XMLParser(target=ElementTree.TreeBuilder(insert_comments=True))
    interface = ElementTree.parse(declaration, parser).getroot().find("interface")
    operations = list(operations_of(interface))
    words = {"interface": interface.get("name"), "introspection": introspection(interface),
             "name": interface.get("name").split(".")[-1].removesuffix("Proxy")}
    for ending, template, lines_of in (("Proxy", PROXY, Operation.in_proxy), ("Caller", CALLER, Operation.in_caller),
                                       ("Adaptor", ADAPTOR, Operation.in_adaptor)):
        lines = (f"    {line}" for operation in operations for line in lines_of(operation))
        text = "#pragma once\n\n" + template.format(**words, operations="\n".join(lines))
        pathlib.Path(folder, f"{words['name']}{ending}.h").write_text(text, encoding="utf-8")


main(*sys.argv[1:])
