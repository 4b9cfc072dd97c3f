#!/usr/bin/env python3
"""Every class of the interface that a source of the plug-in uses is included by name, in the file itself or in one of
the project's headers that it includes: which other headers a header of a devkit brings along differs by release.
A header that only names classes may include <maya/MApiNamespace.h> instead.  And no source declares such a class
itself: at global scope that is an error where the classes live in a namespace, which g++ lets pass.

Prints one line for each fault; the exit status is 1 when there is one.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ROOT / 'src'
# Where a class is not in the header of its own name.
HOMES = {'MSpace': 'MTypes', 'MS': 'MStatus', 'MCallbackId': 'MMessage'}
CLASS = re.compile(r'\b(?:M[A-Z][A-Za-z0-9]*|M3dView|MS)\b')


def code(text):
    """The text without comments, string literals and preprocessor lines."""
    text = re.sub(r'//[^\n]*|/\*.*?\*/', '', text, flags=re.S)
    text = re.sub(r'"(?:\\.|[^"\\\n])*"', '""', text)
    return re.sub(r'^#[^\n]*', '', text, flags=re.M)


def included(path, seen):
    """The interface headers that a file includes, itself or by way of the project's own headers."""
    if path in seen or not path.exists():
        return set()
    seen.add(path)
    text = path.read_text()
    found = set(re.findall(r'#include <maya/(\w+)\.h>', text))
    for header in re.findall(r'#include "([^"]+)"', text):
        found |= included(SOURCES / header, seen)
    return found


def main():
    known = {header.stem for header in (ROOT / 'host/include/maya').glob('*.h')}
    faults = 0
    for path in sorted(SOURCES.rglob('*.h')) + sorted(SOURCES.rglob('*.cpp')):
        text = code(path.read_text())
        have = included(path, set())
        used = {HOMES.get(name, name) for name in CLASS.findall(text)} & known
        names_only = path.suffix == '.h' and 'MApiNamespace' in have
        faults_here = [f'<maya/{name}.h> is not included' for name in sorted(used - have) if not names_only]
        faults_here += [f'{name} is declared here: include <maya/MApiNamespace.h>'
                        for name in re.findall(r'^\s*(?:class|struct) (M[A-Z3]\w*);', text, re.M)]
        for fault in faults_here:
            print(f'{path.relative_to(ROOT)}: {fault}')
        faults += len(faults_here)
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
