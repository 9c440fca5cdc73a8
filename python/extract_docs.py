#!/usr/bin/env python3
"""Collects what the public headers say of classes, fields and functions, for the docstrings of the Python module.

usage: extract_docs.py OUTPUT.py HEADERS...

The output is a dictionary: class name -> (text of the class, {name of a field or function: its text}).
"""

import pathlib
import pprint
import re
import sys

CLASS = re.compile(r"^(?:class|struct) ORMELLE_API (\w+) ")
MEMBER = re.compile(r"^  (?:virtual |static |explicit )*[\w:<>*& ]+?[ *&](\w+)(?:\(.*|;.*)$")
COMMENT = re.compile(r"^\s*///(?!<) ?(.*)$")


def plain(lines):
    """A comment without the marks of Doxygen."""
    text = "\n".join(lines).strip()
    # Examples in C++ stay behind; other blocks, such as catalogs, come along.
    text = re.sub(r"^@code\n(.*?)^@endcode(\n|$)", lambda block: "" if ";" in block[1] else block[1], text, flags=re.M | re.S)
    text = re.sub(r"^(    .*;.*\n?| {4,}.*[{,]\n)+", "", text, flags=re.M)
    text = re.sub(r"^\s*@[{}]\s*$\n?", "", text, flags=re.M)
    text = re.sub(r"@(par|name|file) ?", "", text)
    return text.replace("`", "").strip()


def read(header, docs):
    name, members, comment = None, None, []
    for line in header.read_text().splitlines():
        said = COMMENT.match(line)
        if said:
            comment.append(said.group(1))
            continue
        found = CLASS.match(line)
        if found and not line.rstrip().endswith(";"):
            name, members = found.group(1), {}
            docs[name] = (plain(comment), members)
        elif name and (member := MEMBER.match(line)):
            trailing = line.partition("///<")[2].strip()
            text = plain(comment) or plain([trailing])
            if text and "@{" not in "\n".join(comment):
                members.setdefault(member.group(1), text)
        elif line.startswith("}"):
            name = None
        if line.strip():
            comment = []


def main():
    docs = {}
    for header in sys.argv[2:]:
        read(pathlib.Path(header), docs)
    text = '"""Made of the public headers by extract_docs.py."""\n\nDOCS = ' + pprint.pformat(docs, width=118) + "\n"
    pathlib.Path(sys.argv[1]).write_text(text)


if __name__ == "__main__":
    main()
