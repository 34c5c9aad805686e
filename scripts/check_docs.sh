#!/bin/bash
# What the documents say is there: every path of the tree, script and preset that they name exists, every
# exported function is declared in the header, the reference can be made from it with nothing left
# undescribed, and the documents' code compiles.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
FOLDERS='\.ci|cmake|docs|examples|include|scripts|src|tests|bench'
failed=0
complain() { echo "$*" >&2; failed=1; }
mapfile -t documents < <(git ls-files --cached --others --exclude-standard '*.md')
[ ${#documents[@]} -gt 0 ] || die "no documents found"

for document in "${documents[@]}"; do
  while read -r path; do
    compgen -G "$path" > /dev/null || complain "$document names $path, which is not there"
  done < <(grep -oE "\b($FOLDERS)/[A-Za-z0-9_./-]*[A-Za-z0-9_]" "$document" | grep -v '\.log$' | sort -u)
  while read -r preset; do
    grep -q "\"name\": \"$preset\"" CMakePresets.json ||
      complain "$document names the preset $preset, which is not there"
  done < <(grep -oE -- '--preset [a-z0-9-]+' "$document" | sed 's/--preset //' | sort -u)
done

while read -r name; do
  grep -q "\b$name(" include/nivral/nivral.h || complain "$name is exported but not declared in the header"
done < <(sed -n 's/^ *\(NIVRAL_[A-Za-z0-9_]*\)$/\1/p' src/nivral.def)
# The lines of the log in the guide's table of troubles.
while read -r line; do
  grep -rqF -- "$line" src || complain "docs/guide.md: nothing in src/ logs \"$line\""
done < <(awk -F'|' '/^## / { on = /nothing shows/ }
  on && /^\|/ { n = split($3, part, "`"); for (i = 2; i <= n; i += 2) print part[i] }' docs/guide.md |
  sed -E 's/^\.\.\. //; s/ *\.\.\.$//; s/: SDL_GetError =$//')
# Classes and functions in the notes for developers.
while read -r name; do
  git grep -qw -e "$name" -- src tests include || complain "docs/ names $name, which the source does not have"
done < <(grep -ohP '`\K[A-Za-z_]*[a-z][A-Z][A-Za-z]*(?=\x60|\()' docs/{architecture,direct3d9,directdraw}.md |
  sort -u)
# The player's options and the head of its record files.
while read -r option; do
  grep -qF -- "$option" examples/player/options.cpp || complain "the player has no option $option"
done < <({ grep -hE '^    scripts/demo.sh|`nivral_player' README.md docs/guide.md docs/records.md
  grep -F -- '`--' docs/records.md; } | grep -oE -- '--[a-z][a-z-]*' | sort -u)
grep -qrF "\"$(sed -n 's/^frame,\(class,\)/\1/p' docs/records.md)\"" examples/player ||
  complain "docs/records.md: another first line than the player's"
[ $failed = 0 ] || die "the documents do not match the tree"
say "docs: ${#documents[@]} documents match the tree"
scripts/check_snippets.sh
scripts/reference.sh
