#!/bin/sh
# What is built is hardened: hardening.sh FILE...
set -u
missed=0
for file in "$@"; do
  # WHAT FOUND PATTERN: says what the file lacks unless a line that was found matches.
  has() {
    printf '%s\n' "$2" | grep -Eq "$3" || { echo "$file: no $1"; missed=1; }
  }
  headers=$(readelf -W -h -l -d "$file")
  symbols=$(readelf -W --dyn-syms "$file")
  has 'code at any address' "$headers" 'Type: +DYN'
  has 'tables that become read-only' "$headers" 'GNU_RELRO'
  has 'binding at the start' "$headers" 'FLAGS.*NOW'
  has 'stack without code' "$headers" 'GNU_STACK.* RW '
  has 'guard of the stack' "$symbols" '__stack_chk_fail@'
  has 'checked copies' "$symbols" '__[a-z]+_chk@'
  case $headers in
    *X86-64*) has 'marked targets of jumps' "$(objdump -d -j .text "$file" | grep -c endbr64)" '...' ;;
  esac
done
exit $missed
