# Makes docs/formats.md: joins the program's table of formats (standard input, as `--formats --json`
# prints it) with docs/format_facts.tsv (given as $facts).
#
#   written, back, read   what a file of ours holds, what of it comes back when the file is read
#                         again ("no": it cannot be), what is taken from any file of the format
#   letters               of texts: all, Latin-1, or none when the format holds no text
#   metres                how far a position moves at most
#   lists                 whether several lists are read from one file

def facts:
  $facts | rtrimstr("\n") | split("\n") | map(split("\t")) | .[0] as $titles
  | .[1:] | map([$titles, .] | transpose | map({(.[0]): .[1]}) | add);

def holds:
  if . == "-" or . == "no" then "nothing"
  else {"list": "the list's name", "names": "names", "comments": "comments",
        "altitudes": "altitudes"} as $words
    | split(" ") | map($words[.]) | join(", ") | "positions, " + . end;

def letters:
  if .letters == "none" then "" elif .letters == "all" then "; all letters"
  else "; letters up to U+00FF" + (if .writes then ", others become \"?\"" else "" end) end;

def section:
  "## \(.label)\n\n"
  + "Key `\(.key)`"
  + (if .aliases == null then "" else ", also " + (.aliases | map("`\(.)`") | join(", ")) end) + "; "
  + (if .reads and .writes then "read and written" elif .reads then "read" else "written" end)
  + ". For \(.users).\n\n"
  + (if .writes then "- holds when written: \(.written | holds)\n" else "" end)
  + (if .reads then "- holds when read: \(.read | holds); \(.lists) "
       + (if .lists == "one" then "list" else "lists" end) + " in a file\n" else "" end)
  + (if .writes then "- of a written file comes back: "
       + (if .back == "no" then "nothing, it cannot be read" else .back | holds end) + "\n"
     else "" end)
  + "- positions: \(.precision)"
  + (if .metres == "0" then "" else "; they move by up to \(.metres) m" end) + "\n"
  + "- text: \(.encoding)\(letters)\n"
  + "- limits: \(.limits)\n"
  + "- lost: \(.lost)\n";

(facts | map({(.row): .}) | add) as $byRow
# Links to web maps are no files of points.
| map(select(.patterns != "" and .extension != "url"))
| map(. + ($byRow[.row | tostring] // error("docs/format_facts.tsv has no row \(.row), \(.label)")))
| "# The formats, one by one\n\n"
  + "What each format holds, how precisely, and what is lost in it. `docs/update` makes this page of\n"
  + "the program's own table and of `docs/format_facts.tsv`; tests hold the facts against what the\n"
  + "writers and readers do.\n\n"
  + "Texts of 8-bit formats are bytes of ISO 8859-1, or of the encoding that `--encoding NAME` tells. What\n"
  + "a format cannot hold, `--fit` spells, replaces, cuts or splits.\n\n"
  + (map(section) | join("\n"))
