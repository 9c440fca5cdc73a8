#!/usr/bin/env bash
# The house rules that grep can see. Prints each breach with file and line; fails if there is any.
# (Patterns hold a bracket here and there, so that this file doesn't match itself.)
set -uo pipefail
shopt -s lastpipe  # so that breach, last in its pipe, counts here
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
breaches=0

files() {
  if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git ls-files --cached --others --exclude-standard -- "$@" 2>/dev/null
  else
    find . \( -path ./build -o -path ./.git \) -prune -o -type f -print | sed 's#^\./##' | while IFS= read -r file; do
      for pattern; do
        # shellcheck disable=SC2053  # the right side is a pattern
        [[ $file == $pattern ]] && echo "$file" && break
      done
    done
  fi
}

# breach SENTENCE, with the lines at fault on standard input
breach() {
  local lines
  lines=$(cat)
  [ -z "$lines" ] && return
  printf '%s\n  %s\n' "$1" "${lines//$'\n'/$'\n  '}"
  breaches=$((breaches + 1))
}

# search PATTERN FILES...
search() {
  local pattern=$1
  shift
  files "$@" | tr '\n' '\0' | xargs -0 -r grep -HInE "$pattern" -- 2>/dev/null
}

search '(^|[^a-zA-Z.])/(work|tmp/w[t]|root|home/[a-z]+)/' '*' | grep -v '^\.gitignore:' |
  breach "A path of one machine stands in the repository:"
search '(deb\.debia[n]|registry\.np[m]|pypi\.or[g]|proxy\.golan[g])' '*' |
  breach "A package registry's host stands in the repository:"
search '\b([Tt]he|[Oo]ur|[Tt]his) (spec|specificatio[n])\b|\bspec\.m[d]|\bPart [0-9]+\.[0-9]+\b' '*' ':!*.svg' |
  breach "Say what the code does, not which paper asks for it:"
search '(//|#|/?\*).*\b(TO[D]O|FIX[M]E|X[X]X|HA[C]K|not implemente[d])\b' 'src/*' 'include/*' 'tool/*' 'tools/*' |
  breach "Unfinished marks:"

for header in include/Ormelle/*.h; do
  name=$(basename "$header" .h)
  guard=ORMELLE_${name^^}_H
  [ "$(grep -cE "^#(ifndef|define) $guard\$" "$header")" = 2 ] || echo "$header: wants #ifndef $guard and #define $guard"
done | breach "Include guards of public headers:"

files '*.h' | tr '\n' '\0' | xargs -0 -r grep -hE '^#ifndef ORMELLE_\w+_H$' | sort | uniq -d |
  breach "Include guards that more than one header uses:"

# A class at file level that is defined, not declared, and no template.
awk 'FNR == 1 { template = 0 }
     /^(class|struct) [A-Z]/ && !/;[ \t]*$/ && !template { print FILENAME ":" FNR ": " $0 }
     { template = /^template/ }' include/Ormelle/*.h | grep -vE ': (class|struct) ORMELLE_API ' |
  breach "Classes that the shared library wouldn't export (write class ORMELLE_API Name):"

search '#include ("|<)(\.\./|src/|graph/|quillane/|nodes/)' 'include/*' |
  breach "A public header may include only <Ormelle/...>, the toolkit and the standard library:"

example=$(sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d')
[ -n "$example" ] && [[ $(<tests/install/consumer/consumer.cpp) == *"$example"* ]] ||
  echo "README.md" | breach "The example isn't the code that tests/install/consumer/consumer.cpp compiles:"

# Layers: what stands left may not include what stands right of it.
layer() {
  local folder=$1 pattern=$2
  search "#include [\"<]($pattern)" "$folder/*" | breach "$folder may not include what stands above it:"
}
layer src/graph/data 'quillane/|nodes/|Inventor/(nodekits|actions|elements)/'
layer src/quillane/cell 'quillane/(mesh|view|search|contour|surface|stream|emit|rep|vector)/|nodes/|Ormelle/Po'
layer src/quillane/marching 'quillane/(mesh|view|search|contour|surface|stream|emit|rep|vector)/|nodes/|Ormelle/Po'
layer src/quillane/mesh 'quillane/(contour|surface|stream|emit|rep|vector)/|nodes/'
layer src/quillane/contour 'quillane/(emit|rep|vector)/|nodes/|Ormelle/Po'
# What an application's filter says of a cell is asked wherever cells are walked.
layer src/quillane/surface 'quillane/(emit|rep|vector)/|nodes/|Ormelle/Po([^C]|C[^e])'
layer src/quillane/vector 'quillane/(emit|rep)/|nodes/'
layer src/quillane/emit 'quillane/rep/|nodes/field/'

count() { files "$@" | tr '\n' '\0' | xargs -0 -r cat | grep -c '[^[:space:]]'; }
code=$(count 'include/*.h' 'src/*.cpp' 'src/*.h' 'tool/*.cpp' 'tool/*.h' 'examples/*.cpp' 'examples/*.h')
tests=$(count 'tests/*.cpp' 'tests/*.h' 'fuzz/*.cpp')
((code == 0)) || printf 'Lines that are not blank: code %d, tests %d (%d %%; a quarter to a third is the aim)\n' \
  "$code" "$tests" $((100 * tests / code))
long=$(files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tool/*.cpp' | tr '\n' '\0' | xargs -0 -r wc -l |
  awk '$1 > 600 && $2 != "total" { print "  " $0 }' | sort -rn)
[ -z "$long" ] || printf 'Longer than 600 lines; is there a second idea inside?\n%s\n' "$long"

((breaches == 0)) || {
  printf 'check_sources: %d of the house rules are broken\n' "$breaches"
  exit 1
}
