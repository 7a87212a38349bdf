"""Compares our declarations of the system's calls with the table, and what the back end calls."""

import argparse
import json
import pathlib
import shlex
import sys

import back_end
import compare
import facts
import headers
import syntax


# Where Foundation's headers are on Debian.
FOUNDATION = ["/usr/include/GNUstep/"]


def flags_of(command):
    """Those that say what a source means."""
    words = shlex.split(command)[1:]
    flags = []
    while words:
        word = words.pop(0)
        if word in ("-o", "-c", "-x"):
            words.pop(0)
        elif not word.startswith("-fsanitize"):
            flags.append(word)
    return flags


def including(paths):
    return "".join(f'#include "{path}"\n' for path in paths)


def by_folder(paths):
    """As the release build joins them, so that they can be read as one."""
    folders = {}
    for path in paths:
        folders.setdefault(path.parent, []).append(path)
    return folders.values()


def check(clang, flags, include, sources, table, oldest, foundation):
    """Problems, how many declarations of ours there are, and the rows that the sources need."""
    own = sorted(include.rglob("*.h"))
    kept = (f"{include}/", *foundation)
    found = headers.Headers(
        syntax.nodes(syntax.dump(clang, flags, including(own)), lambda file: file.startswith(kept))
    )
    problems = []
    count = 0

    def is_ours(declaration):
        return str(declaration.at[0]).startswith(f"{include}/")

    for declaration in filter(is_ours, found.declarations):
        count += 1
        for each in compare.problems(declaration, table, found, oldest):
            problems.append(f"{declaration.at[0]}:{declaration.at[1]}: {declaration} {each}")
    uses = back_end.BackEnd(table, found, is_ours, oldest)
    try:
        dumps = [
            # Namespace and classes of ours.
            syntax.dump(clang, flags, including(folder), "estrel")
            for folder in by_folder(sources)
        ]
    except syntax.DoesNotCompile as error:
        return [*problems, f"the back end does not compile: {error}"], count, {}
    uses.check([node for dump in dumps for node in syntax.nodes(dump)])
    return problems + uses.problems, count, uses.used


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    path = {"type": pathlib.Path, "required": True}
    parser.add_argument("--commands", help="compile_commands.json", **path)
    parser.add_argument("--include", help="our headers", **path)
    parser.add_argument("--back-end", help="folder of sources", **path)
    parser.add_argument("--oldest", help="the oldest macOS to run on", required=True)
    options = parser.parse_args()
    commands = [each for each in json.loads(options.commands.read_text())
                if pathlib.Path(each["file"]).is_relative_to(options.back_end)]
    objective = next(each["command"] for each in commands if each["file"].endswith(".mm"))
    here = pathlib.Path(__file__).parent
    table = facts.Table([here / "macos-facts.tsv", here / "additional-facts.tsv"])
    problems, declared, used = check(
        shlex.split(objective)[0], flags_of(objective), options.include,
        sorted(pathlib.Path(each["file"]) for each in commands), table,
        facts.version(options.oldest), FOUNDATION)
    for each in dict.fromkeys(problems):
        print(each)
    print(f"{declared} declarations, {len(used)} rows that the back end needs, "
          f"{len(set(problems))} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
