#!/usr/bin/env bash
# Each C++ sample of the documentation stands, word for word, in an example that the build compiles, and
# each Python sample of the README in one that the tests run.
set -euo pipefail
cd "$(dirname "$0")/.."

python3 - <<'FIN'
import pathlib
import re
import sys

exemples = pathlib.Path("examples")
readme = pathlib.Path("README.md")
pages = {"cpp": [readme, *pathlib.Path("docs").glob("*.md")], "python": [readme]}
fins = {"cpp": "*.cpp", "python": "*.py"}


def blocs(langue):
    for page in pages[langue]:
        for bloc in re.findall(rf"```{langue}\n(.*?)```", page.read_text(), re.S):
            yield page, bloc


fautes = [f"{page}: no example holds: {bloc.splitlines()[0]}"
          for langue in pages
          for page, bloc in blocs(langue)
          if not any(bloc in e.read_text() for e in exemples.rglob(fins[langue]))]
print("\n".join(fautes), end="\n" if fautes else "")
sys.exit(1 if fautes else 0)
FIN
