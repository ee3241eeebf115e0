#!/usr/bin/env bash
# Fails when shellcheck has anything to say about a script.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git ls-files -z -- '*.sh' .ci/run | xargs -0 shellcheck
