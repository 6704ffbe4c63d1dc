#!/usr/bin/env python3
"""Checks the translations in lang/ against the texts in the sources.

    checktranslations.py [ROOT]

Prints one line for each check: OK, or FAIL with the places below it. The exit code is 0 when all are
OK. A key is a text that the sources pass to oroTranslate or mark with oroKey; for each language that
has a table of the application, every key needs a translation with the same placeholders.
"""

import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree as xml

# Functions that take a key, with the number of that argument; -1 is the last one.
KEY_FUNCTIONS = {"oroTranslate": 1, "oroTranslateArray": 1, "oroKey": 0}

# Functions of one folder that hand a key on, found there alone.
OWN_KEY_FUNCTIONS = {
    "components/batch/": {"reportBatch": 1, "BatchCommand": 0},
    "components/commandline/": {"refuse": 0},
    "components/initserver/": {"fail": 0},
    "components/points/": {"reportPoints": 1, "PointProgress": 0, "fail": 0},
    # "translate" in the Python text of the component
    "components/pythonscript/": {"raisePython": 1, "translate": 0},
    "gui/apps/main/": {"CommandRecord": -1},
}

# Files that call oroTranslate with a key that is no literal there, and where it comes from.
PASSED_ON = {
    "base/basic/kelsettingsjournal.cpp": "oroKey in this file",
    "components/batch/batchprocessor.cpp": "oroKey in this file",
    "components/batch/batchprogress.cpp": "BatchCommand",
    "components/batch/batchreport.cpp": "reportBatch",
    "components/commandline/commandline.cpp": "refuse",
    "components/commandline/runoutcome.cpp": "oroKey in this file",
    "components/initserver/kelinitserver.cpp": "fail of the parser",
    "components/points/pointcommandcall.cpp": "fail in this file",
    "components/points/pointcommandrun.cpp": "fail of the commands",
    "components/points/pointcommands.cpp": "oroKey in the table of the commands",
    "components/points/pointfilecommands.cpp": "oroKey in this file and commands/pngwriter.cpp",
    "components/points/pointfiles.cpp": "oroKey in formats/pointtexts.h",
    "components/points/pointprogress.cpp": "PointProgress",
    "components/points/pointreport.cpp": "reportPoints",
    "components/pythonscript/pythonerrors.cpp": "raisePython",
    "components/pythonscript/pythonmodule.cpp": "the script",
    "components/xmldom/xmldocument.cpp": "oroKey in this folder",
    "gui/apps/main/commandrecord.cpp": "CommandRecord",
    "services/errorwinboxdisplay.cpp": "oroKey in this file",
    "services/orotranslatorservice.cpp": "whoever asks the service",
}

# Lists of keys that are marked with oroKey where they stand: whoever names one hands a key on.
KEY_LISTS = {"pointtexts"}

# They define the functions.
DEFINITIONS = ("orobasictypes/orotranslate.h", "orobasictypes/orotranslate.cpp")

# They choose no language, since that reads the user's settings: their texts stay English.
ENGLISH = ("gui/apps/cowlinfo/",)

PRODUCT = ("base", "components", "framework", "gui", "headless", "orobasictypes", "services")

TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|(?P<string>"(?:\\.|[^"\\\n])*")|\'(?:\\.|[^\'\\\n])*\''
                   r"|(?P<name>[A-Za-z_]\w*)|(?P<sign>[^\s\w])|\w+", re.DOTALL)
ESCAPE = re.compile(r"\\(x[0-9A-Fa-f]+|[0-7]{1,3}|.)", re.DOTALL)
ESCAPED = {"n": "\n", "t": "\t", "r": "\r", "\\": "\\", '"': '"', "'": "'"}


class Key:
    """A key and the first place where it stands."""

    def __init__(self, text, place):
        self.text = text
        self.place = place


# ---------------------------------------------------------------------------------------------
# Keys of the sources

def literal(token):
    return ESCAPE.sub(lambda m: ESCAPED.get(m.group(1), m.group(0)), token[1:-1])


def tokens_of(text):
    """The tokens without comments, as (kind, text, line)."""
    line, reached = 1, 0
    for match in TOKEN.finditer(text):
        line += text.count("\n", reached, match.start())
        reached = match.start()
        if not match.group(0).startswith(("//", "/*")):
            yield match.lastgroup or "other", match.group(0), line


def arguments_at(tokens, opening):
    """The arguments of the call whose parenthesis stands at `opening`, each a list of tokens."""
    depth, arguments = 0, [[]]
    for token in tokens[opening:]:
        depth += {"(": 1, "{": 1, "[": 1, ")": -1, "}": -1, "]": -1}.get(token[1], 0) \
            if token[0] == "sign" else 0
        if depth == 0:
            return [a for a in arguments if a]
        if depth == 1 and token[1] == "," and token[0] == "sign":
            arguments.append([])
        elif token[1] != "(" or depth > 1 or token[0] != "sign":
            arguments[-1].append(token)
    return []


def calls_of(tokens, functions):
    """The calls of the functions, and the objects that are made of them, as (line, key argument)."""
    for at, (kind, name, line) in enumerate(tokens):
        if kind != "name" or name not in functions:
            continue
        opening = at + 1
        while opening < len(tokens) and tokens[opening][1] == ">":
            opening += 1  # of std::optional<CommandRecord>
        if opening < len(tokens) and tokens[opening][0] == "name":
            opening += 1  # the object's name
        if opening >= len(tokens) or tokens[opening][1] != "(":
            continue
        arguments = arguments_at(tokens, opening)
        number = functions[name]
        if arguments and number < len(arguments):
            yield name, line, arguments[number]


def is_marked_or_declared(argument):
    """Whether the key is found elsewhere, or the call is no call but the function itself."""
    texts = [text for _, text, _ in argument]
    return "oroKey" in texts or "const" in texts or not texts or not KEY_LISTS.isdisjoint(texts)


def keys_of_file(path, text):
    """The keys of one source file, and the places of keys that nobody can find."""
    functions = dict(KEY_FUNCTIONS)
    for folder, own in OWN_KEY_FUNCTIONS.items():
        if path.startswith(folder):
            functions.update(own)
    keys, hidden = [], []
    for name, line, argument in calls_of(list(tokens_of(text)), functions):
        kinds = {kind for kind, *_ in argument}
        place = f"{path}:{line}"
        if kinds == {"string"}:
            keys.append(Key("".join(literal(text) for _, text, _ in argument), place))
        elif path not in PASSED_ON and not is_marked_or_declared(argument):
            hidden.append(f"{place}: the key is no literal: mark it with oroKey where it stands, "
                          "and name this file in PASSED_ON")
    return keys, hidden


class Sources:
    """The keys of all sources by the table that they belong to: None is the application's, a name
    is that of a component with files of its own."""

    def __init__(self, root):
        self.tables = {None: {}}
        self.hidden = []
        files = {}
        for folder in PRODUCT:
            for path in sorted((root / folder).rglob("*")):
                if path.suffix in (".h", ".cpp"):
                    files[path.relative_to(root).as_posix()] = path.read_text(encoding="utf-8")
        owners = {}
        for path, text in files.items():
            match = re.search(r'\.translations = "(\w+)"', text)
            if match and path.startswith("components/"):
                owners["/".join(path.split("/")[:2]) + "/"] = match.group(1)
        for path, text in files.items():
            if path in DEFINITIONS or path.startswith(ENGLISH):
                continue
            keys, hidden = keys_of_file(path, text)
            owner = next((name for folder, name in owners.items() if path.startswith(folder)), None)
            table = self.tables.setdefault(owner, {})
            for key in keys:
                table.setdefault(key.text, key)
            self.hidden += hidden


# ---------------------------------------------------------------------------------------------
# Translations

def without_namespace(tag):
    return tag.rsplit("}", 1)[-1]


def read_resx(path):
    """The pairs of the application's table, as the program resolves them."""
    for data in xml.parse(path).getroot():
        value = data.find("value")
        if data.tag == "data" and value is not None:
            name, text = data.get("name", ""), "".join(value.itertext())
            for escape, plain in ((r"\"", '"'), (r"\n", "\n"), (r"\t", "\t")):
                name, text = name.replace(escape, plain), text.replace(escape, plain)
            yield name, text


def read_xliff(path):
    """The pairs of a component's file."""
    for file in xml.parse(path).getroot():
        for body in file:
            for unit in body:
                if [without_namespace(e.tag) for e in (file, body, unit)] != \
                        ["file", "body", "trans-unit"]:
                    continue
                texts = {without_namespace(e.tag): e.text or "" for e in unit}
                yield texts.get("source", ""), texts.get("target", "")


def placeholders(text):
    """The numbers of the placeholders as the program finds them, each as often as it stands."""
    found, at = [], 0
    while at + 1 < len(text):
        if text[at] == "%":
            if "1" <= text[at + 1] <= ":":
                found.append(text[at + 1])
            at += 1
        at += 1
    return sorted(found)


class Table:
    """One file of translations beside the keys that it is for."""

    def __init__(self, root, owner, language, keys):
        self.keys = keys
        name = f"{owner}_{language}" if owner else f"velmora.{language}.resx"
        self.path = f"lang/{name}"
        self.pairs, self.problem = [], None
        reader = read_xliff if owner else read_resx
        try:
            self.pairs = list(reader(root / self.path))
        except (OSError, xml.ParseError) as error:
            self.problem = f"{self.path}: {error}"


def languages_of(root):
    names = sorted(path.name for path in (root / "lang").glob("velmora.*.resx"))
    return [name[len("velmora."):-len(".resx")] for name in names]


# ---------------------------------------------------------------------------------------------
# The checks

def shown(text):
    return '"' + text.replace("\n", "\\n").replace("\t", "\\t") + '"'


def check_languages(languages, tables, sources):
    """There is a language, and there are keys"""
    if not languages:
        yield "lang/: no velmora.<language>.resx"
    if not all(sources.tables.values()):
        yield "a table has no key in the sources"


def check_found(languages, tables, sources):
    """Each key of the sources can be found"""
    yield from sources.hidden


def check_readable(languages, tables, sources):
    """Each table of a language is there and can be read"""
    for table in tables:
        if table.problem:
            yield table.problem


def check_complete(languages, tables, sources):
    """Each key has a translation"""
    for table in tables:
        known = {source for source, target in table.pairs if target}
        for key in table.keys.values():
            if key.text not in known:
                yield f"{table.path}: {shown(key.text)} of {key.place}"


def check_placeholders(languages, tables, sources):
    """A translation has the placeholders of its key, each once"""
    for table in tables:
        for source, target in table.pairs:
            found = placeholders(target)
            if target and (found != placeholders(source) or len(set(found)) != len(found)):
                yield f"{table.path}: {shown(source)} against {shown(target)}"


def check_used(languages, tables, sources):
    """Each translation is for a key of the sources, and no key has two"""
    for table in tables:
        seen = set()
        for source, _ in table.pairs:
            if source not in table.keys:
                yield f"{table.path}: {shown(source)} is in no source"
            if source in seen:
                yield f"{table.path}: {shown(source)} stands twice"
            seen.add(source)


def check_narrow(languages, tables, sources):
    """Keys are plain ASCII: nothing else is found again"""
    for table in sources.tables.values():
        for key in table.values():
            if not key.text.isascii():
                yield f"{key.place}: {shown(key.text)}"


CHECKS = [check_languages, check_found, check_readable, check_complete, check_placeholders,
          check_used, check_narrow]


def main(arguments):
    parser = argparse.ArgumentParser(description="Checks of the translations.")
    parser.add_argument("root", nargs="?", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parents[1])
    root = parser.parse_args(arguments).root
    sources = Sources(root)
    languages = languages_of(root)
    tables = [Table(root, owner, language, keys)
              for language in languages for owner, keys in sources.tables.items()]
    good = True
    for check in CHECKS:
        findings = list(check(languages, tables, sources))
        print(f"{'FAIL' if findings else 'OK  '} {check.__doc__}")
        for finding in findings:
            print(f"       {finding}")
        good = good and not findings
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
