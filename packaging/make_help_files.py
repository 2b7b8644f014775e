#!/usr/bin/env python3
"""Makes the manual page and the shell completion of each program from its --help and --version.

Usage: make_help_files.py OUT SUMMARY=PROGRAM...

Writes OUT/man/NAME.1.gz and OUT/completions/NAME for bash. The same programs give the same bytes.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import gzip
import pathlib
import re
import subprocess
import sys


def said_by(program, option):
    return subprocess.run([program, option], check=True, capture_output=True, text=True).stdout.rstrip()


def escaped(text):
    """Escapes text for troff: minus signs stay minus signs, and no line begins with a dot, which would be a command."""
    lines = text.replace("\\", "\\e").replace("-", "\\-").splitlines()
    return "\n".join("\\&" + line if line[:1] in ".'" else line for line in lines)


def manual_page(name, summary, version, text):
    others = [other for other in ("sivray", "sivray-render", "sivray-content") if other != name]
    see = ", ".join(f"\\fB{escaped(other)}\\fR(1)" for other in others)
    return (
        f'.TH {name.upper()} 1 "" "{version}" "User Commands"\n.SH NAME\n{escaped(name)} \\- {escaped(summary)}\n'
        f".SH DESCRIPTION\n.nf\n{escaped(text)}\n.fi\n.SH SEE ALSO\n{see}\n"
    )


def completion(name, text):
    """The completion offers the options, for the first word also the commands, and otherwise files."""
    options = sorted(set(re.findall(r"(?<![\w-])--[a-z][\w-]*", text)))
    commands = sorted(set(re.findall(rf"^ +{name} ([a-z]+)\b", text, re.MULTILINE)))
    function = "_" + name.replace("-", "_")
    return (
        f"# Completion of {name} for bash.\n{function}() {{\n  local words='{' '.join(options)}'\n"
        f"  [ \"$COMP_CWORD\" -ne 1 ] || words+=' {' '.join(commands)}'\n"
        "  COMPREPLY=($(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\"))\n}\n"
        f"complete -o default -F {function} {name}\n"
    )


def main():
    out = pathlib.Path(sys.argv[1])
    for folder in ("man", "completions"):
        (out / folder).mkdir(parents=True, exist_ok=True)
    for argument in sys.argv[2:]:
        summary, program = argument.split("=", 1)
        name = pathlib.Path(program).name
        text = said_by(program, "--help")
        page = manual_page(name, summary, said_by(program, "--version"), text)
        (out / "man" / f"{name}.1.gz").write_bytes(gzip.compress(page.encode(), mtime=0))
        (out / "completions" / name).write_text(completion(name, text))


if __name__ == "__main__":
    main()
