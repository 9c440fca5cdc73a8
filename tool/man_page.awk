# Makes the manual page of the tool from what it prints for --help: that of all commands first, then that of each.
#
# A line of help is "  NAMES   text", with the text from column 31 on, on the line below if the names are long.
function plain(text) { gsub(/\\/, "\\e", text); gsub(/-/, "\\-", text); sub(/^[.']/, "\\\\\\&&", text); return text }
function item(names, text) {
  sub(/ REQUIRED/, "", names)
  sub(/ +$/, "", names)
  sub(/:[A-Z]+/, "", names)
  gsub(/,-/, ", -", names)
  printf ".TP\n.B %s\n", plain(names)
  if (text != "") print plain(text)
}
BEGIN {
  printf ".TH ORMELLE 1 \"\" \"Ormelle %s\" \"User Commands\"\n", version
  print ".SH NAME\normelle \\- draw, show and convert scenes of scientific data\n.SH SYNOPSIS"
  print ".B ormelle\n.I COMMAND\n[\\fIOPTIONS\\fR] \\fIFILES\\fR\n.SH DESCRIPTION"
}
FNR == 1 { file++; section = "" }
/^Usage: / { if (file > 1) printf ".br\nUsage: %s\n", plain(substr($0, 8)); next }
/^[A-Z][a-z]+:$/ { section = $0; if (file == 1 && section == "Options:") print ".SH OPTIONS"; next }
section == "" && $0 != "" {
  if (file > 1) { if (file == 2) print ".SH COMMANDS"; printf ".SS %s\n", name(FILENAME) }
  print plain($0)
}
# The commands themselves follow; so does their help.
file == 1 && section == "Subcommands:" { next }
file > 1 && /--help .*Print this help/ { next }
/^  [^ ]/ {
  head = substr($0, 1, 30)
  if (length($0) > 30 && head ~ / $/ && head !~ /\[[^]]*$/) item(substr(head, 3), substr($0, 31))
  else item(substr($0, 3), "")
  next
}
/^ +[^ ]/ { sub(/^ +/, ""); print plain($0) }
function name(path) { sub(/.*\//, "", path); sub(/\.help$/, "", path); return "ormelle " path }
END {
  print ".SH EXIT STATUS\n0 for success, 1 for a failure, which one sentence explains, and 2 for a wrong command line."
  print ".SH EXAMPLES\n.TP\n.B ormelle render part.vtu \\-o part.png\nDraw a data file."
  print ".TP\n.B ormelle new map map.iv\nWrite a scene to start from."
}
