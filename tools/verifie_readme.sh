#!/usr/bin/env bash
# Each C++ sample of the documentation stands, word for word, in an example that the build compiles.
set -euo pipefail
cd "$(dirname "$0")/.."

python3 - <<'FIN'
import pathlib
import re
import sys

exemples = [p.read_text() for p in pathlib.Path("examples").rglob("*.cpp")]
pages = [pathlib.Path("README.md"), *pathlib.Path("docs").glob("*.md")]
fautes = [f"{page}: no example holds: {bloc.splitlines()[0]}"
          for page in pages
          for bloc in re.findall(r"```cpp\n(.*?)```", page.read_text(), re.S)
          if not any(bloc in exemple for exemple in exemples)]
print("\n".join(fautes), end="\n" if fautes else "")
sys.exit(1 if fautes else 0)
FIN
