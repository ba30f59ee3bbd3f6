# Finds links that lead nowhere, anchors included, in the pages of a site:
#   find . -type f | awk -f docs/links.awk          (from the folder of the site)
# Standard input names every file; the HTML files among them are read twice.

function folder(path) { return match(path, /.*\//) ? substr(path, 1, RLENGTH) : "" }

# "a/b/../c/./d" is "a/c/d".
function plain(path,    piece, count, i, kept, depth) {
  count = split(path, piece, "/")
  depth = 0
  for (i = 1; i <= count; ++i) {
    if (piece[i] == "..") { if (depth > 0) --depth } else if (piece[i] != "." && piece[i] != "") kept[++depth] = piece[i]
  }
  path = ""
  for (i = 1; i <= depth; ++i) path = path (i > 1 ? "/" : "") kept[i]
  return path
}

function check(page, link,    target, anchor) {
  if (link ~ /^(https?|mailto|data|javascript):/ || link ~ /^\/\//) {
    return
  }
  gsub(/&amp;/, "\\&", link)
  gsub(/%20/, " ", link)
  anchor = ""
  if (index(link, "#")) { anchor = substr(link, index(link, "#") + 1); link = substr(link, 1, index(link, "#") - 1) }
  sub(/\?.*/, "", link)
  target = link == "" ? page : plain(folder(page) link)
  if (!(target in exists) && (target "/index.html") in exists) target = target "/index.html"
  if (target == "") target = "index.html"
  if (!(target in exists)) { report(page, link, "no such file"); return }
  if (anchor != "" && target ~ /\.html$/ && !((target, anchor) in anchors)) report(page, link "#" anchor, "no such anchor")
  ++checked
}

function report(page, link, why) {
  print page ": " link ": " why > "/dev/stderr"
  ++broken
}

function values(page, line, name, pass,    tail, value) {
  tail = line
  while (match(tail, "[ \t]" name "=\"[^\"]*\"")) {
    value = substr(tail, RSTART + length(name) + 3, RLENGTH - length(name) - 4)
    tail = substr(tail, RSTART + RLENGTH)
    if (pass == 1) anchors[page, value] = 1
    else check(page, value)
  }
}

function readPages(pass,    i, line) {
  for (i = 1; i <= pages; ++i) {
    while ((getline line < page[i]) > 0) {
      if (pass == 1) { values(page[i], line, "id", 1); values(page[i], line, "name", 1) }
      else { values(page[i], line, "href", 2); values(page[i], line, "src", 2) }
    }
    close(page[i])
  }
}

{
  sub(/^\.\//, "")
  exists[$0] = 1
  if ($0 ~ /\.html$/ && $0 != "404.html") page[++pages] = $0
}
END {
  readPages(1)
  readPages(2)
  print checked + 0 " links in " pages + 0 " pages, " broken + 0 " broken"
  exit broken > 0 || checked == 0
}
