"""What headers declare, read from their syntax tree."""

import dataclasses
import re

import facts
from syntax import type_of, walk

_SIZES = {
    "bool": 1,
    "signed char": 1,
    "unsigned char": 1,
    "unsigned short": 2,
    "int": 4,
    "unsigned int": 4,
    "long": 8,
    "unsigned long": 8,
    "double": 8,
    "uint8_t": 1,
    "uint32_t": 4,
    "int64_t": 8,
    "uint64_t": 8,
    "intptr_t": 8,
    "uintptr_t": 8,
}


# As it is written, since clang does not print it as JSON.
_AVAILABLE = re.compile(
    r"(?:API_AVAILABLE\(macos\(|availability\(macos, introduced ?= ?)([\d.]+)")


@dataclasses.dataclass
class Declaration:
    """As the rows are: of one thing, with the names that it is declared with."""

    kind: str
    owner: str
    name: str
    at: tuple
    result: str = ""
    parameters: list = dataclasses.field(default_factory=list)  # name and type of each
    value: str = ""
    # Of a type: "enum" when it is one of its own, "record", or "typedef".
    form: str = ""
    is_readonly: bool = False
    getter: str = ""
    since: tuple = ()

    def __str__(self):
        sign = {"class-method": "+", "method": "-"}.get(self.kind, "")
        owner = f"{self.owner} " if self.owner else ""
        return f"{owner}{sign}{self.name}"


def availability(node):
    """The version that its attribute names; empty for none."""
    for child in node.get("inner", []):
        if child["kind"] == "AvailabilityAttr" and child["from"]:
            file, _, offset = child["from"]
            with open(file, "rb") as source:
                source.seek(offset)
                text = source.read(200).decode()
            found = _AVAILABLE.match(text)
            return facts.version(found[1]) if found else ()
    return ()


class Headers:
    """All declarations of some headers."""

    def __init__(self, roots):
        self.declarations = []
        self.members = {}  # by class, selector, and whether it is the class's own
        self.names = {}  # functions, constants, enumerators, types
        self.supers = {}
        self.protocols = {}
        self._records = {}
        for root in roots:
            self._add(root)

    def ancestry(self, name):
        """A class and those above it, each with its protocols."""
        while name:
            yield name
            yield from self.protocols.get(name, [])
            name = self.supers.get(name)

    def _add(self, node):
        kind = node["kind"]
        if kind == "LinkageSpecDecl":
            for child in node.get("inner", []):
                self._add(child)
        elif kind in ("ObjCInterfaceDecl", "ObjCCategoryDecl", "ObjCProtocolDecl"):
            self._add_container(node)
        elif kind == "FunctionDecl" and not node.get("isImplicit"):
            self._name(node, "function", result=type_of(node).split("(")[0].strip(),
                       parameters=_parameters(node))
        elif kind == "VarDecl":
            result = type_of(node).removeprefix("const ")
            self._name(node, "constant", result=result, value=_value(node))
        elif kind == "EnumDecl":
            self._add_enum(node)
        elif kind == "CXXRecordDecl":
            self._records[node["id"]] = node
        elif kind == "TypedefDecl":
            self._add_typedef(node)

    def _name(self, node, kind, **rest):
        since = availability(node)
        declaration = Declaration(kind, "", node["name"], node["at"], since=since, **rest)
        self.declarations.append(declaration)
        self.names.setdefault(node["name"], declaration)

    def _add_container(self, node):
        owner = node.get("interface", node)["name"]
        since = availability(node)
        protocols = [each["name"] for each in node.get("protocols", [])]
        self.protocols.setdefault(owner, []).extend(protocols)
        # "@class X;" knows the class above as well, and ends where its name stands.
        is_forward = node["loc"].get("offset") == node["range"]["end"].get("offset")
        above = node.get("super", {}).get("name")
        if above and not is_forward:
            self.supers[owner] = above
            declaration = Declaration("class", "", owner, node["at"], above, since=since)
            self.declarations.append(declaration)
        for child in node.get("inner", []):
            if child["kind"] == "ObjCMethodDecl" and not child.get("isImplicit"):
                self._add_method(owner, child, since)
            elif child["kind"] == "ObjCPropertyDecl":
                self._add_property(owner, child, since)

    def _add_method(self, owner, node, since):
        is_class = not node["instance"]
        declaration = Declaration(
            "class-method" if is_class else "method", owner, node["name"], node["at"],
            node["returnType"]["qualType"], _parameters(node), since=availability(node) or since,
        )
        self.declarations.append(declaration)
        self.members.setdefault((owner, node["name"], is_class), declaration)

    def _add_property(self, owner, node, since):
        name = node["name"]
        declaration = Declaration(
            "property", owner, name, node["at"], type_of(node),
            is_readonly=node.get("readonly", False),
            getter=node.get("getter", node)["name"],
            since=availability(node) or since,
        )
        self.declarations.append(declaration)
        self.members.setdefault((owner, declaration.getter, False), declaration)
        if not declaration.is_readonly:
            self.members.setdefault((owner, f"set{name[0].upper()}{name[1:]}:", False), declaration)

    def _add_enum(self, node):
        underlying = node.get("fixedUnderlyingType", {}).get("qualType", "int")
        if "name" in node:
            self._name(node, "struct-size", result=underlying, form="enum")
        for child in node.get("inner", []):
            if child["kind"] == "EnumConstantDecl":
                result = node.get("name", underlying)
                self._name(child, "enum-value", result=result, value=_value(child))

    def _add_typedef(self, node):
        if node["name"] in self.names:  # of an enumeration that it names once more
            return
        records = [each["ownedTagDecl"]["id"] for each in walk(node) if "ownedTagDecl" in each]
        record = self._records.get(records[0], {}) if records and "*" not in type_of(node) else {}
        fields = [(each["name"], type_of(each)) for each in record.get("inner", [])
                  if each["kind"] == "FieldDecl"]
        result = f"struct {record.get('name', '')}".strip() if fields else type_of(node)
        self._name(node, "struct-size", result=result, parameters=fields,
                   form="record" if fields else "typedef")

    def size(self, name):
        """In bytes; None when it is not known."""
        name = name.removeprefix("const ")
        if name.endswith("*") or "(*" in name or "(^" in name:
            return 8
        declaration = self.names.get(name)
        if not declaration or declaration.kind != "struct-size":
            return _SIZES.get(name)
        if declaration.form == "record":  # of fields of one size, as all of them here
            sizes = [self.size(field) for _, field in declaration.parameters]
            return None if None in sizes else sum(sizes)
        return self.size(declaration.result)


def _parameters(node):
    return [(each.get("name", ""), type_of(each)) for each in node.get("inner", [])
            if each["kind"] == "ParmVarDecl"]


def _value(node):
    """Of an integer constant; empty where there is none."""
    values = [each for each in walk(node) if each is not node and "value" in each]
    if not values:
        return ""
    negative = values[0]["kind"] == "IntegerLiteral" and any(
        each.get("opcode") == "-" for each in walk(node)
    )
    return ("-" if negative else "") + str(values[0]["value"])
