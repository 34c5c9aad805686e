#!/bin/bash
# clang-tidy in a compiler's clothes, so that ccache remembers where it found nothing: takes clang++'s command
# line, and writes an object file of sorts if it has nothing to say.
set -euo pipefail
options=() object='' source=''
while [ $# -gt 0 ]; do
  case $1 in
    -o) object=$2; shift ;;
    *.cpp) source=$1 ;;
    *) options+=("$1") ;;
  esac
  shift
done
case " ${options[*]} " in
  *" -E "*) clang++ "${options[@]}" "$source" ${object:+-o "$object"} ;;
  *) clang-tidy --quiet "$source" -- "${options[@]}" >&2 && echo "nothing found" > "$object" ;;
esac
