# What doxygen reads of a header: what users may call. Private sections, copies and moves, lists of fields and
# comparisons are left out; what says all in its name (a setter, a container's size) gets the words for it.
# No line moves.
#   awk -f docs/api.awk HEADER
closing == "" && /^ *private:$/ {
  closing = $0
  sub(/ private:/, "};", closing)
}
closing != "" {
  if ($0 != closing) { print ""; next }
  closing = ""
}
/^[a-z].*[A-Za-z]::[a-z][A-Za-z]*\(.*\{$/ || /^ *template <class Self>$/ || /^ *friend bool operator==.*\{$/ { skipping = 1 }
skipping || /^ *friend / {
  if ($0 ~ /^ ? ? ? ?}$/) skipping = 0
  print ""
  next
}
/(\) (noexcept )?= (default|delete);|&& other\) noexcept;|\(const [A-Za-z]+& other\);)$/ && /&/ {
  print ""
  next
}
before !~ /\/\/\// && /^ *(static )?void set[A-Z][A-Za-z]*\(/ {
  name = $0
  sub(/^ *(static )?void set/, "", name)
  sub(/\(.*/, "", name)
  printf "/** Replaces %s(). */", tolower(substr(name, 1, 1)) substr(name, 2)
}
before !~ /\/\/\// && / (empty|size|begin|end|data|contains|reserve|append)\(.*\)( const)?( noexcept)? ?[;{]/ {
  printf "/** As in the containers of the standard library. */"
}
{
  print
  before = $0
}
