#!/usr/bin/env bash
# The project's own mutation run: one-line changes to the sources under src/, each rebuilt in
# build/mutation and judged by the test programs that link the changed file. Prints the kill
# rate, the surviving mutants and, per test file, its lines, its kills and the kills no other
# test file makes. Seeded: the same options pick the same mutants on the same tree.
#   bash scripts/mutation.sh                          # 300 mutants, seed 1
#   bash scripts/mutation.sh --seed 7 --count 20      # another small sample
#   bash scripts/mutation.sh --files 'src/store/*'    # only some files
#   bash scripts/mutation.sh --list                   # show the chosen mutants, run nothing
# It changes the files in place one at a time and puts each back (also on Ctrl-C); it refuses
# to start when src/ has uncommitted changes. Survivors that no test could ever notice go in
# scripts/mutation-equivalent.txt with a reason.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_BUILD_PACKAGES[@]}" ccache lld binutils python3
export CCACHE_BASEDIR="$root"
exec /usr/bin/python3 scripts/mutation.py "$@"
