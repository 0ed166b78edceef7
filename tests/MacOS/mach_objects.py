"""How the adapters are compiled for macOS, what their object files say to the system, and what the
system may say to them."""

import json
import os
import re
import shlex
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
REPOSITORY = os.path.dirname(os.path.dirname(HERE))

SENT_TO_SYSTEM = "messages to the system"
SENT_TO_US = "messages to this program's own objects"
CALLED_BY_SYSTEM = "methods that the system calls"
CALLED_BY_US = "methods that this program calls"
FORMATS = "formats of log lines"
CLASSES = "classes"
OTHERS = "functions and constants"

ANALYZER = [
    *("--analyze", "--analyzer-output", "text", "--analyzer-no-default-checks"),
    *("-Xclang", "-analyzer-checker=core,osx,nullability"),
    # The adapters call few functions of their own; deeper inlining is slow and finds nothing more.
    *("-Xclang", "-analyzer-config", "-Xclang", "mode=shallow"),
]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def compile_commands(build, belongs):
    """How each source that belongs to the check is compiled."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        every = json.load(file)
    commands = [one for one in every if belongs(os.path.relpath(one["file"], REPOSITORY))]
    if not commands:
        sys.exit(f"there is nothing to compile in {build}")
    return commands


def flags(command):
    """The words of a compiler's call without its source and its object."""
    words = shlex.split(command["command"])
    return words[: words.index("-o")]


def object_of(command):
    words = shlex.split(command["command"])
    return os.path.join(command["directory"], words[words.index("-o") + 1])


def adapters(folder):
    """How each adapter is compiled, for one processor; the other's sources are the same."""
    return compile_commands(os.path.join(folder, "arm64"), lambda path: path.endswith(".mm"))


def texts(path, section):
    """The texts of a section, each with its address."""
    listing = output("llvm-otool-19", "-v", "-s", "__TEXT", section, path)
    return dict(re.findall(r"^([0-9a-f]{16})  (.*)$", listing, re.MULTILINE))


def sent_messages(path):
    """The selectors that the object refers to."""
    names = texts(path, "__objc_methname")
    addresses = {}
    for line in output("llvm-nm-19", path).splitlines():
        address, _, symbol = line.strip().rpartition(" ")
        addresses[symbol] = address.split(" ")[0]
    listing = output("llvm-objdump-19", "--reloc", "--section=__objc_selrefs", path)
    symbols = re.findall(r"_RELOC_UNSIGNED\s+(\S+)$", listing, re.MULTILINE)
    return {names[addresses[symbol]] for symbol in symbols}


def methods(path):
    """The methods that the object implements, without those that the compiler adds."""
    listing = output("llvm-nm-19", "--defined-only", "--format=just-symbols", path)
    found = re.findall(r"^[-+]\[.*\]$", listing, re.MULTILINE)
    return {method for method in found if " .cxx_" not in method}


def symbols(paths):
    """What the objects together expect from elsewhere, without what C++ has mangled: the linker
    looks after that."""
    list_names = ("llvm-nm-19", "--format=just-symbols")
    wanted = set(output(*list_names, "--undefined-only", *paths).split("\n"))
    defined = set(output(*list_names, "--defined-only", *paths).split("\n"))
    return {
        symbol for symbol in wanted - defined if symbol.startswith("_") and symbol[:3] != "__Z"
    }


def selector_of(method):
    return method[method.index(" ") + 1 : -1]


def read_list(path):
    """The entries of a reviewed list by section; a line that begins with # is a comment."""
    sections = {}
    with open(path, encoding="utf-8") as file:
        for line in file.read().splitlines():
            if line.startswith("["):
                section = sections.setdefault(line.strip("[]"), [])
            elif line and not line.startswith("#"):
                section.append(line)
    return sections


def differences(what, expected, found):
    return [f"{what}: not in the reviewed list: {entry}" for entry in sorted(found - expected)] + [
        f"{what}: in the reviewed list, but not in the program: {entry}"
        for entry in sorted(expected - found)
    ]


def complaints_about_messages(objects):
    """Where the objects differ from selectors.txt."""
    reviewed = read_list(os.path.join(HERE, "selectors.txt"))
    sent, implemented, formats = set(), set(), set()
    for path in objects:
        sent |= sent_messages(path)
        implemented |= methods(path)
        formats |= set(texts(path, "__oslogstring").values())
    known = {*reviewed[CALLED_BY_SYSTEM], *reviewed[CALLED_BY_US]}
    return (
        differences("messages", {*reviewed[SENT_TO_SYSTEM], *reviewed[SENT_TO_US]}, sent)
        + differences("methods", known, implemented)
        + differences("log formats", set(reviewed[FORMATS]), formats)
    )


def complaints_about_symbols(objects):
    """Where the objects differ from imported-symbols.txt."""
    reviewed = read_list(os.path.join(HERE, "imported-symbols.txt"))
    names = symbols(objects)
    classes = {name.split("$_")[1] for name in names if name.startswith("_OBJC_")}
    others = {name for name in names if not name.startswith("_OBJC_")}
    return differences("classes", set(reviewed[CLASSES]), classes) + differences(
        "symbols", set(reviewed[OTHERS]), others
    )


def unified(paths, replaced, folder):
    """Writes one source with the text of all of `paths`, which the analyzer reads as a whole: of
    what is included it looks only at functions that are called. `replaced` holds texts to take for
    some of them."""
    lines, seen = [], set()

    def add(path):
        if path in seen:
            return
        seen.add(path)
        text = replaced.get(path)
        if text is None:
            with open(path, encoding="utf-8") as file:
                text = file.read()
        lines.append(f'#line 1 "{path}"')
        for number, line in enumerate(text.splitlines(), 1):
            own = re.match(r'#\s*(?:import|include) "(Platform/MacOS/.*)"', line)
            if own:
                add(os.path.join(REPOSITORY, own.group(1)))
                lines.append(f'#line {number + 1} "{path}"')
            elif line != "#pragma once":
                lines.append(line)

    for path in paths:
        add(path)
    unit = os.path.join(folder, "unified.mm")
    with open(unit, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")
    return unit


def analysed(command, unit):
    """What the analyzer, called by `command`, says about a unit."""
    ran = subprocess.run([*command, *ANALYZER, unit], capture_output=True, text=True, check=False)
    return [ran.stderr] if ran.returncode != 0 or "warning:" in ran.stderr else []


def system_declares(selectors, command, folder):
    """What the compiler, called by `command`, says about selectors that no header of the system
    declares."""
    path = os.path.join(folder, "system-selectors.mm")
    with open(path, "w", encoding="utf-8") as file:
        file.write("#import <AppKit/AppKit.h>\n\nSEL systemSelectors[] = {\n")
        file.writelines(f"    @selector({selector}),\n" for selector in sorted(set(selectors)))
        file.write("};\n")
    ran = subprocess.run(
        [*command, "-Werror=undeclared-selector", "-fsyntax-only", path],
        capture_output=True,
        text=True,
        check=False,
    )
    unknown = re.findall(r"undeclared selector '(.*?)'", ran.stderr)
    if ran.returncode != 0 and not unknown:
        return [ran.stderr]
    return [f"the system declares no such message: {selector}" for selector in unknown]
