#!/usr/bin/env python3
"""fetchsource.py PACKAGE FOLDER: unpacks a source package of the distribution into FOLDER.

The package comes through apt from where this machine's binary packages come from: the entries for
source packages are made from those of the machine, for this run alone and in a folder of its own, so
no right and no change of the machine's settings is needed. apt checks the signatures. A FOLDER that
exists is left as it is. Ends with 1 and a message when something is missing.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


class Missing(Exception):
    """What a person has to mend; the text is for them."""


def codename(text):
    """The distribution's name in its package lists, from the text of os-release."""
    found = re.search(r'^VERSION_CODENAME="?([\w.-]+)', text, re.M)
    if not found:
        raise Missing("this system does not tell its VERSION_CODENAME in /etc/os-release")
    return found[1]


def own_suites(suites, release):
    """Those of the distribution itself; others have no source packages for us."""
    return [suite for suite in suites
            if suite == release or suite.startswith((release + "-", release + "/"))]


def source_line(line, release):
    """A line of a .list file as one for source packages, or None."""
    found = re.match(r"deb\s+(\[.*?\]\s+)?(\S+)\s+(\S+)\s+(\S.*)", line.strip())
    if not found or not own_suites([found[3]], release):
        return None
    return f"deb-src {found[1] or ''}{found[2]} {found[3]} {found[4]}"


def source_stanza(stanza, release):
    """A stanza of a .sources file as one for source packages, or None."""
    text = "\n".join(line for line in stanza.splitlines() if not line.startswith("#"))
    fields = {name.lower(): value.split()
              for name, value in re.findall(r"^([\w-]+):((?:.*\n?)(?:[ \t].*\n?)*)", text, re.M)}
    suites = own_suites(fields.get("suites", []), release)
    if "deb" not in fields.get("types", []) or not suites or fields.get("enabled") == ["no"]:
        return None
    text = re.sub(r"^Types:.*(\n[ \t].*)*", "Types: deb-src", text, flags=re.M | re.I)
    return re.sub(r"^Suites:.*(\n[ \t].*)*", "Suites: " + " ".join(suites), text,
                  flags=re.M | re.I)


def write_entries(machine, parts, release):
    """Writes source entries to the folder `parts` from those below `machine`; the number made."""
    files = [machine / "sources.list"]
    files += sorted((machine / "sources.list.d").glob("*")) if machine.is_dir() else []
    lines, stanzas = [], []
    for file in files:
        if not file.is_file():
            continue
        text = file.read_text(encoding="utf-8", errors="replace")
        if file.suffix == ".list":
            lines += [source_line(line, release) for line in text.splitlines()]
        elif file.suffix == ".sources":
            stanzas += [source_stanza(part, release) for part in re.split(r"\n[ \t]*\n", text)]
    lines = [line for line in lines if line]
    stanzas = [stanza for stanza in stanzas if stanza]
    (parts / "source.list").write_text("\n".join(lines) + "\n", encoding="utf-8")
    (parts / "source.sources").write_text("\n\n".join(stanzas) + "\n", encoding="utf-8")
    return len(lines) + len(stanzas)


def run(command, folder, what):
    """Runs a command quietly; its words are shown when it fails."""
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          stdin=subprocess.DEVNULL, text=True, errors="replace", check=False)
    if done.returncode != 0:
        raise Missing(f"{what}:\n{done.stdout.strip()}")


def fetch(package, work):
    """Unpacks the package below `work` and returns its folder."""
    for program, owner in (("apt-get", "apt"), ("dpkg-source", "dpkg-dev")):
        if not shutil.which(program):
            raise Missing(f"there is no {program}; install the package '{owner}'")
    parts = work / "parts"
    for folder in (parts, work / "lists" / "partial", work / "cache", work / "out"):
        folder.mkdir(parents=True)
    release = codename(pathlib.Path("/etc/os-release").read_text(encoding="utf-8"))
    if write_entries(pathlib.Path("/etc/apt"), parts, release) == 0:
        raise Missing(f"/etc/apt has no entry for the packages of '{release}', from which the "
                      "entry for source packages could be made")
    apt = ["apt-get", "-qq", "-o", "Dir::Etc::SourceList=/dev/null",
           "-o", f"Dir::Etc::SourceParts={parts}", "-o", f"Dir::State::Lists={work / 'lists'}",
           "-o", f"Dir::Cache={work / 'cache'}"]
    run([*apt, "update"], work, "the list of source packages cannot be fetched")
    what = f"the source package '{package}' cannot be fetched"
    try:
        run([*apt, "source", package], work / "out", what)
    except Missing:
        # A mirror may list an update before it has it, or after; the release's own stays.
        run([*apt, "source", f"{package}/{release}"], work / "out", what)
    folders = [path for path in (work / "out").iterdir() if path.is_dir()]
    if len(folders) != 1:
        raise Missing(f"the source package '{package}' was not unpacked")
    return folders[0]


def main(arguments):
    if len(arguments) != 2:
        print(__doc__.splitlines()[0], file=sys.stderr)
        return 2
    package, target = arguments[0], pathlib.Path(arguments[1])
    if target.exists():
        return 0
    try:
        # apt gives up its rights for what it fetches, so the folder lets others in.
        with tempfile.TemporaryDirectory(prefix="cowl-source-") as work:
            os.chmod(work, 0o755)
            print(f"fetching the source package '{package}' into {target}", file=sys.stderr)
            unpacked = fetch(package, pathlib.Path(work))
            target.parent.mkdir(parents=True, exist_ok=True)
            with tempfile.TemporaryDirectory(prefix=target.name, dir=target.parent) as beside:
                copy = pathlib.Path(beside) / "copy"
                shutil.copytree(unpacked, copy, symlinks=True)
                if not target.exists():
                    os.rename(copy, target)  # in one step: another run may do the same
    except (Missing, OSError) as problem:
        print(f"fetchsource.py: {problem}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
