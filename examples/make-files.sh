#!/bin/sh
# Makes the small files that the example documents send; they are kept beside the documents, so this is only
# needed to change them. The pictures are drawn here: nobody else's work, the same bytes every time.
# Needs awk and the Debian package netpbm.
set -eu
cd "$(dirname "$0")/files"

# A harbour, as a portable pixel map: draw WIDTH HEIGHT SKY GLOW HILL WATER, a colour being "red green blue".
draw() {
  awk -v width="$1" -v height="$2" -v sky="$3" -v glow="$4" -v hill="$5" -v water="$6" '
    # The colour that lies a part of the way from one to another, as a line of the picture.
    function mix(from, to, part,    a, b, i, text) {
      split(from, a); split(to, b)
      for (i = 1; i <= 3; ++i) text = text " " int(a[i] + (b[i] - a[i]) * part)
      return text
    }
    function colour(x, y,    hilltop, fromSun) {
      hilltop = 0.52 - 0.10 * sin(4 * x + 0.6) - 0.04 * sin(11 * x)
      fromSun = sqrt((x - 1.05) ^ 2 + (y - 0.30) ^ 2)
      if (isBoat(x - 0.62, y - 0.78)) return "250 248 240"
      if (y > 0.64) return mix(water, glow, (sin(90 * y + 6 * x) > 0.7) * (1 - y))
      if (y > hilltop) return mix(hill, water, (y - hilltop) * 1.5)
      return fromSun < 0.09 ? "255 244 214" : mix(glow, sky, fromSun < 1 ? fromSun : 1)
    }
    # A hull and two sails around the mast.
    function isBoat(x, y) {
      if (y > 0 && y < 0.06) return x > -0.16 + y && x < 0.16 - y
      return y > -0.34 && y < -0.02 && (x > 0 ? x < 0.36 * (y + 0.34) : x < -0.012 && -x < 0.22 * (y + 0.34))
    }
    BEGIN {
      print "P3", width, height, 255
      for (row = 0; row < height; ++row)
        for (column = 0; column < width; ++column) print colour((column + 0.5) / height, (row + 0.5) / height)
    }'
}

morning() { draw "$1" "$2" '88 150 214' '255 224 178' '58 104 82' '38 98 138'; }
evening() { draw "$1" "$2" '44 38 92' '246 132 84' '34 36 58' '52 46 96'; }

morning 320 200 | pnmtojpeg -quality=80 >harbour-morning.jpg
evening 320 200 | pnmtojpeg -quality=80 >harbour-evening.jpg
morning 96 60 | pnmtojpeg -quality=75 >harbour-preview.jpg
evening 160 100 | pamcut -left 34 -width 100 | pnmquant -quiet 32 | pnmtopng -quiet -compression=9 >avatar.png

cat >packing-list.txt <<'END'
Round the harbour, Sunday 9:30 at the old crane

- water, 1 l each
- sandwiches (the kiosk is closed in May)
- rain jacket
- bus ticket for the way back
END

cat >harbour-walk.gpx <<'END'
<?xml version="1.0" encoding="UTF-8"?>
<gpx version="1.1" creator="Harbour Walks" xmlns="http://www.topografix.com/GPX/1/1">
  <trk>
    <name>Round the harbour</name>
    <trkseg>
      <trkpt lat="54.3217" lon="10.1382"><ele>3</ele></trkpt>
      <trkpt lat="54.3231" lon="10.1409"><ele>4</ele></trkpt>
      <trkpt lat="54.3248" lon="10.1443"><ele>11</ele></trkpt>
      <trkpt lat="54.3262" lon="10.1425"><ele>6</ele></trkpt>
      <trkpt lat="54.3239" lon="10.1377"><ele>3</ele></trkpt>
    </trkseg>
  </trk>
</gpx>
END

cat >video-stand-in.txt <<'END'
These bytes stand in for a video, which would be too large to keep here. Videos are passed on unread.
END

ls -l
