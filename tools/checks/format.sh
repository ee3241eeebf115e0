#!/usr/bin/env bash
# Fails when a C++ file is not laid out as .clang-format says.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run --Werror
