"""One declaration beside the row for it."""

import re

# What stands in our headers for macros of the system.
MACROS = {"kestrelbayConstantString": "CFSTR", "kestrelbayLog": "os_log_with_type"}

_SIDES = re.compile(r"(-?\w+) on \w+")


def plain(text):
    """A type without nullability, in one spelling."""
    text = re.sub(r"\s*\b_(Nullable|Nonnull|Null_unspecified)\b\s*", "", text)
    text = re.sub(r"\*\s+(?=\*)", "*", text).replace("(void)", "()")
    return re.sub(r"\bsigned long\b", "long", text)


def loose(text):
    """What another Foundation may spell otherwise: collections without their elements, and
    objects of any class."""
    text = re.sub(r"<.*>", "", plain(text)).removeprefix("oneway ")
    return "id" if text in ("instancetype", "ElementT") else text


def are_loosely_same(left, right):
    left, right = loose(left), loose(right)
    return left == right or "id" in (left, right) and (left + right).endswith("*")


def nullability(text):
    """The outermost of a type."""
    pattern = r"\([*^] ?_(Nullable|Nonnull)\b" if "(" in text else r"_(Nullable|Nonnull)$"
    found = re.search(pattern, text)
    return found[1].lower() if found else ""


def snake_case(name):
    """URLString is url_string."""
    name = re.sub(r"([A-Z]+)([A-Z][a-z])", r"\1_\2", name)
    return re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name).lower()


def fact_for(declaration, table):
    if declaration.kind == "class":
        return table.of_class(declaration.name)
    if declaration.kind in ("method", "class-method", "property"):
        selector = declaration.getter or declaration.name
        return table.of_member(declaration.owner, selector, declaration.kind == "class-method")
    return table.of_name(MACROS.get(declaration.name, declaration.name))


def problems(declaration, table, headers, oldest):
    fact = fact_for(declaration, table)
    if not fact:
        return ["has no row"]
    if declaration.name in MACROS:
        return []
    return [f"{each} ({fact.row})" for each in differences(declaration, fact, headers, oldest)]


def differences(declaration, fact, headers, oldest):
    """What is declared otherwise than the row says, as texts. Versions up to the oldest that the
    program runs on need no guard."""
    if fact.kind != declaration.kind:
        return [f"is a {declaration.kind}, not a {fact.kind}"]
    found = _types(declaration, fact, plain, str.__eq__)
    found += _kind(declaration, fact, headers)
    found += _values(declaration, fact)
    found += _nullabilities(declaration, fact)
    # Types and enumerators are there at compile time, whatever the program then runs on.
    is_there = fact.kind in ("struct-size", "enum-value") or fact.since <= oldest
    needed = () if is_there else fact.since
    if declaration.since != needed:
        found.append(f"is available from {_spelt(declaration.since)} on, not {_spelt(needed)}")
    return found


def loose_differences(declaration, fact):
    """The same for what is another Foundation's."""
    if declaration.kind == "method" and fact.kind == "property":
        return [] if are_loosely_same(declaration.result, fact.result) else [
            f"returns {declaration.result}, not {fact.result}"]
    if fact.kind != declaration.kind:
        return [f"is a {declaration.kind}, not a {fact.kind}"]
    if fact.kind == "enum-value":
        return _values(declaration, fact)
    return _types(declaration, fact, loose, are_loosely_same)


def _types(declaration, fact, spelt, is_same):
    found = []
    # For one of several languages each: "struct x * (C, C++); X * (Objective-C)".
    results = [re.sub(r" \((C|Objective).*", "", each) for each in fact.result.split("; ")]
    if declaration.kind == "constant":  # which it is goes without saying
        results = [each.removeprefix("const ") for each in results]
    results = [plain(each) for each in results]
    if not any(is_same(spelt(declaration.result), each) for each in results):
        found.append(f"has {spelt(declaration.result) or 'nothing'}, not {fact.result}")
    if declaration.form == "record":
        types = [f"{name} {plain(field)}" for name, field in declaration.parameters]
    else:
        types = [spelt(field) for _, field in declaration.parameters]
    arguments = [plain(each) for each in fact.arguments]
    if len(types) != len(arguments) or not all(map(is_same, types, arguments)):
        found.append(f"takes {'; '.join(types) or 'nothing'}, not {'; '.join(fact.arguments)}")
    return found


def _kind(declaration, fact, headers):
    """What is particular to properties and types."""
    found = []
    if fact.kind == "property":
        if declaration.is_readonly != fact.has("readonly"):
            found.append(f"is {'readonly' if declaration.is_readonly else 'readwrite'}")
        if declaration.getter != fact.getter():
            found.append(f"has the getter {declaration.getter}, not {fact.getter()}")
    elif fact.kind == "struct-size":
        is_strict = any(fact.has(each) for each in ("NS_ENUM", "CF_ENUM"))
        if is_strict != (declaration.form == "enum"):
            found.append(f"is a type of the form {declaration.form}, but the row says "
                         f"{'an enumeration' if is_strict else 'none of its own'}")
        if fact.value and str(headers.size(declaration.name)) != fact.value:
            found.append(f"has {headers.size(declaration.name)} bytes, not {fact.value}")
    return found


def _values(declaration, fact):
    if fact.kind not in ("constant", "enum-value") or not fact.value or not declaration.value:
        return []
    allowed = _SIDES.findall(fact.value) or [fact.value]
    return [] if declaration.value in allowed else [f"is {declaration.value}, not {fact.value}"]


def differs_by_processor(fact):
    return bool(_SIDES.match(fact.value))


def _nullabilities(declaration, fact):
    found = []
    if fact.kind in ("property", "method", "class-method", "function"):
        if nullability(declaration.result) != fact.nullability():
            found.append(f"is {nullability(declaration.result) or 'not said to be null or not'}, "
                         f"not {fact.nullability() or 'without nullability'}")
    for name, text in declaration.parameters if fact.kind != "struct-size" else []:
        wanted = next((word for word in ("nullable", "nonnull")
                       if snake_case(name) in fact.named_arguments(word)), "")
        if nullability(text) != wanted:
            found.append(f"takes {name} as {nullability(text) or 'neither null nor not'}, "
                         f"not as {wanted or 'without nullability'}")
    told = [*fact.named_arguments("nullable"), *fact.named_arguments("nonnull")]
    names = [snake_case(name) for name, _ in declaration.parameters]
    return found + [f"calls no argument {name}" for name in told if name not in names]


def _spelt(version):
    return ".".join(map(str, version)) or "the oldest"
