"""What the sources of the back end ask of the system, read from their syntax tree."""

import json
import re

import compare
import facts
from headers import availability
from syntax import type_of, walk

# Ours, which tells whether the running system is that version or a later one.
_VERSION_TEST = "isMacOSAtLeast"
_WRAPPERS = {"ImplicitCastExpr", "ParenExpr", "ExprWithCleanups", "CXXStaticCastExpr",
             "MaterializeTemporaryExpr", "ConstantExpr"}


def _bare(node):
    while node["kind"] in _WRAPPERS and node.get("inner"):
        node = node["inner"][-1]
    return node


def _class_of(text):
    """Of a pointer's type: the class, "" for any, None for what is no object's."""
    text = re.sub(r"\b(const|__kindof|_Nullable|_Nonnull|__strong)\b", "", compare.plain(text))
    text = re.sub(r"<.*>", "", text).strip()
    if text in ("id", "Class"):
        return ""
    found = re.fullmatch(r"(\w+) ?\*", text)
    return found[1] if found else None


class BackEnd:
    """Finds what is used without a row, before its time or otherwise than the row allows."""

    def __init__(self, table, headers, is_ours, oldest):
        self.table = table
        self.headers = headers
        self.is_ours = is_ours  # is a header's declaration our own?
        self.oldest = oldest
        self.problems = []
        self.used = {}  # rows, by what was checked against them
        self.texts = set()
        self._guarded = {}  # classes and functions of ours, by what they need
        self._guarded_ids = {}  # of classes
        self._superclasses = {}  # of the classes of ours

    def check(self, roots):
        for root in roots:
            for node in walk(root):
                if node["kind"] in ("CXXRecordDecl", "FunctionDecl") and availability(node):
                    self._guarded[node["name"]] = availability(node)
                    self._guarded_ids[node["id"]] = availability(node)
                elif node["kind"] == "ObjCInterfaceDecl" and "name" in node.get("super", {}):
                    self._superclasses[node["name"]] = node["super"]["name"]
        for root in roots:
            self._visit(root, self.oldest, False)
        for text in self.table.texts("string") - self.texts:
            self.problems.append(f"{text} is in the table, but in no source")

    def _report(self, node, what):
        file, line, _ = node["from"] or node["at"] or ("?", 0, 0)
        self.problems.append(f"{file}:{line}: {what}")

    def _visit(self, node, since, is_assertion):
        """since: the version that is sure here."""
        kind = node["kind"]
        context = self._guarded_ids.get(node.get("parentDeclContextId"), ())
        since = max(since, availability(node), context)
        is_assertion |= kind == "StaticAssertDecl"
        if kind == "ObjCMessageExpr":
            self._message(node, since)
        elif kind == "ObjCForCollectionStmt":
            selector = "countByEnumeratingWithState:objects:count:"
            self._member(node, "NSArray", selector, False, since)
        elif kind == "DeclRefExpr":
            self._reference(node, since, is_assertion)
        elif kind == "CallExpr":
            self._call(node)
        elif kind in ("StringLiteral", "ObjCStringLiteral"):
            self._text(node)
        if kind.endswith("Expr"):
            self._own(node, since)
        children = node.get("inner", [])
        if kind == "IfStmt":
            for child, sure in zip(children, (since, max(since, _asked(children[0])), since)):
                self._visit(child, sure, is_assertion)
        else:
            for child in children:
                self._visit(child, since, is_assertion)

    def _use(self, node, fact, name, since):
        if not fact:
            self._report(node, f"{name} has no row")
            return
        self.used.setdefault(fact.row, fact)
        if fact.since > since and fact.kind != "enum-value":
            self._report(node, f"{name} is not guarded: it needs {_spelt(fact.since)} ({fact.row})")
        gone = facts.version(fact.deprecated)
        if fact.deprecated and (not gone or gone <= self.oldest):
            self._report(node, f"{name} is deprecated ({fact.row})")

    def _message(self, node, since):
        selector = node["selector"]
        is_class = "classType" in node
        children = node.get("inner", [])
        receiver = node["classType"]["qualType"] if is_class else _class_of(type_of(children[0]))
        if receiver is None:  # depends on a template's parameter; its instances are looked at
            return
        if receiver:
            declaration, fact = self._member(node, receiver, selector, is_class, since)
            if declaration and fact:
                self._arguments(node, declaration, fact, children if is_class else children[1:])
        else:
            possible = self.table.with_selector(selector, is_class)
            self._use(node, possible[0] if possible else None, f"id -{selector}", since)

    def _member(self, node, owner, selector, is_class, since):
        """The declaration of a method and its row: the nearest, seen from the owner."""
        system = owner
        while system in self._superclasses and not self.table.of_class(system):
            system = self._superclasses[system]
        keys = [(each, selector, is_class) for each in self.headers.ancestry(system)]
        fact = next(filter(None, (self.table.of_member(*key) for key in keys)), None)
        declaration = next(filter(None, map(self.headers.members.get, keys)), None)
        self._use(node, fact, f"{owner} {'+' if is_class else '-'}{selector}", since)
        if fact:
            self._beside_row(node, declaration, fact)
        return declaration, fact

    def _reference(self, node, since, is_assertion):
        name = node["referencedDecl"].get("name", "")
        declaration = self.headers.names.get(name)
        if node["referencedDecl"]["kind"] not in ("FunctionDecl", "VarDecl", "EnumConstantDecl"):
            return
        if not declaration or declaration.kind == "struct-size":
            return
        fact = self.table.of_name(compare.MACROS.get(name, name))
        self._use(node, fact, name, since)
        if fact and name not in compare.MACROS:
            self._beside_row(node, declaration, fact)
        if fact and is_assertion and compare.differs_by_processor(fact):
            self._report(node, f"{name} is asserted, but is {fact.value} ({fact.row})")

    def _beside_row(self, node, declaration, fact):
        """Our own declarations are looked at whether used or not."""
        if not declaration:
            self._report(node, f"{fact.name} is not declared ({fact.row})")
        elif not self.is_ours(declaration):
            for each in compare.loose_differences(declaration, fact):
                self._report(node, f"{declaration} {each} ({fact.row})")

    def _call(self, node):
        children = node.get("inner", [])
        callee = _bare(children[0]).get("referencedDecl", {}).get("name", "")
        if compare.MACROS.get(callee) == "CFSTR":
            text = json.loads(_bare(children[1])["value"])
            if text not in self.table.texts("CFSTR macro", "property list key"):
                self._report(node, f"no constant of the table has the text {text}")
            return
        declaration, fact = self.headers.names.get(callee), self.table.of_name(callee)
        if declaration and fact:
            self._arguments(node, declaration, fact, children[1:])

    def _arguments(self, node, declaration, fact, arguments):
        """By their names; another Foundation may call the only one otherwise."""
        wanted = fact.named_arguments("nonnull")
        for (name, _), argument in zip(declaration.parameters, arguments):
            takes_none = compare.snake_case(name) in wanted or len(arguments) == len(wanted) == 1
            if takes_none and self._may_be_null(argument):
                self._report(node, f"{declaration} may get null for {name} ({fact.row})")

    def _may_be_null(self, node):
        node = _bare(node)
        if node["kind"] in ("GNUNullExpr", "CXXNullPtrLiteralExpr"):
            return True
        if compare.nullability(type_of(node)) == "nullable":
            return True
        if node["kind"] != "ObjCMessageExpr":
            return False
        is_class = "classType" in node
        possible = self.table.with_selector(node["selector"], is_class)
        return any(fact.nullability() == "nullable" for fact in possible)

    def _text(self, node):
        if node["kind"] == "StringLiteral":
            found = re.fullmatch(r'(?:u8|u|U|L)?(".*")', node["value"], re.DOTALL)
            try:
                self.texts.add(json.loads(found[1]))
            except ValueError:  # escapes that JSON has not
                pass

    def _own(self, node, since):
        """What of ours needs a version of the system."""
        names = f"{type_of(node)} {node.get('referencedDecl', {}).get('name')}"
        for name, needed in self._guarded.items():
            if needed > since and re.search(rf"\b{name}\b", names):
                self._report(node, f"{name} is not guarded: it needs {_spelt(needed)}")


def _asked(condition):
    """The version that holds where the condition does."""
    for node in walk(condition):
        if node["kind"] == "CallExpr":
            callee = _bare(node["inner"][0]).get("referencedDecl", {}).get("name")
            if callee == _VERSION_TEST:
                return (int(_bare(node["inner"][1])["value"]), 0)
    return ()


def _spelt(version):
    return ".".join(map(str, version))
