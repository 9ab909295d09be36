#!/usr/bin/env bash
# clang-format in check mode, then clang-tidy over every source: lint.sh JOBS
set -euo pipefail

mapfile -t sources < <(git ls-files '*.cpp' '*.h')
clang-format-19 --dry-run --Werror "${sources[@]}"
cmake --preset lint >/dev/null
mapfile -t unites < <(git ls-files '*.cpp' | grep -vE '^(bench)/')
printf '%s\n' "${unites[@]}" | xargs -P "$1" -n 4 clang-tidy-19 -p build/lint --quiet
