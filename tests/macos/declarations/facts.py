"""The table of what macOS declares, as README.md tells."""

import csv
import dataclasses
import re


@dataclasses.dataclass
class Fact:
    """A row. What a cell leaves empty it says nothing about."""

    kind: str
    owner: str  # a class, or the header of what belongs to none
    name: str
    result: str
    arguments: list
    value: str
    since: tuple
    deprecated: str
    notes: list
    row: str  # where it stands

    def has(self, note):
        return note in self.notes

    def named_arguments(self, nullability):
        """In the spelling of the table: words in small letters with underscores."""
        for note in self.notes:
            if note.startswith(f"{nullability} args: "):
                return note.split(": ")[1].split(", ")
        return []

    def nullability(self):
        """Of the result of a function or method, or of a property."""
        subject = "" if self.kind == "property" else "return "
        for word in ("nullable", "nonnull"):
            if self.has(subject + word):
                return word
        return ""

    def getter(self):
        for note in self.notes:
            if note.startswith("getter "):
                return note.split()[1]
        return self.name

    def setter(self):
        return f"set{self.name[0].upper()}{self.name[1:]}:"


def version(text):
    """As numbers; what is older than the first that the table tells counts as that."""
    return tuple(map(int, re.findall(r"\d+", text)))


def read(path):
    facts = []
    with open(path, encoding="utf-8", newline="") as file:
        rows = csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE)
        for number, row in enumerate(rows, start=2):
            facts.append(
                Fact(
                    kind=row["kind"],
                    owner=row["owner"].split(" (")[0],
                    name=row["name"],
                    result=row["return"],
                    arguments=[each for each in row["arguments"].split("; ") if each],
                    value=row["value"],
                    since=version(row["since"]),
                    deprecated=row["deprecated"],
                    notes=row["nullable"].split("; "),
                    row=f"{path.name}:{number}",
                )
            )
    return facts


class Table:
    """Rows by what they are about."""

    def __init__(self, paths):
        self.facts = [fact for path in paths for fact in read(path)]
        self._classes = {}
        self._members = {}
        self._others = {}
        for fact in self.facts:
            for index, key in self._keys(fact):
                if key in index:
                    raise SystemExit(f"{fact.row}: {fact.name} also stands in {index[key].row}")
                index[key] = fact

    def _keys(self, fact):
        if fact.kind == "class":
            return [(self._classes, fact.name)]
        if fact.kind == "class-method":
            return [(self._members, (fact.owner, fact.name, True))]
        if fact.kind == "method":
            return [(self._members, (fact.owner, fact.name, False))]
        if fact.kind == "property":
            selectors = [fact.getter()] + ([fact.setter()] if fact.has("readwrite") else [])
            return [(self._members, (fact.owner, each, False)) for each in selectors]
        return [(self._others, fact.name)]

    def of_class(self, name):
        return self._classes.get(name)

    def of_member(self, owner, selector, is_class):
        return self._members.get((owner, selector, is_class))

    def with_selector(self, selector, is_class):
        """Of any class."""
        return [
            fact
            for (_, name, of_class), fact in self._members.items()
            if (name, of_class) == (selector, is_class)
        ]

    def of_name(self, name):
        """A function, constant, enumerator or type."""
        return self._others.get(name)

    def texts(self, *results):
        return {
            fact.value for fact in self.facts if fact.kind == "constant" and fact.result in results
        }
