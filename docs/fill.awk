# Puts the parts into a page: {{SORT:NAME}} becomes what stands in the file parts/SORT/NAME, and an unknown or empty
# part is an error.   awk -v parts=DIR -f docs/fill.awk PAGE
{
  while (match($0, /\{\{[a-z]+:[^}]+\}\}/)) {
    marker = substr($0, RSTART + 2, RLENGTH - 4)
    path = marker
    sub(/:/, "/", path)
    path = parts "/" path
    text = ""
    while ((status = (getline line < path)) > 0) text = text (text == "" ? "" : "\n") line
    close(path)
    if (text == "") {
      print FILENAME ":" FNR ": nothing stands for {{" marker "}}" > "/dev/stderr"
      exit 1
    }
    print marker >> (parts "/used/" substr(marker, 1, index(marker, ":") - 1))
    $0 = substr($0, 1, RSTART - 1) text substr($0, RSTART + RLENGTH)
  }
  print
}
