# Converts a public header for Doxygen: the first comment describes the file, each "// ---- Title ----" starts a group,
# which the comment after it describes, and names in comments become links. Keeps line numbers.

# links(LINE) returns the line with a link for each name in its comment, except before characters that Doxygen parses as
# parts of the name.
function links(line,   done) {
  if (!match(line, /\/\/|\/\*\*/)) return line
  done = substr(line, 1, RSTART - 1)
  line = substr(line, RSTART)
  while (match(line, / ZephlinkSDK_[A-Za-z0-9_]*[A-Za-z0-9]/)) {
    done = done substr(line, 1, RSTART) (substr(line, RSTART + RLENGTH, 1) ~ /[:&<(]/ ? "" : "@ref ") \
           substr(line, RSTART + 1, RLENGTH - 1)
    line = substr(line, RSTART + RLENGTH)
  }
  return done line
}

NR == 1 { at_top = 1 }
at_top && /^\/\// {
  text = /^\/\/     / ? $0 : links($0)
  sub(/^\/\/ ?/, "", text)
  print "/// " (text ~ /^[A-Z][a-z -]+$/ && length(text) < 30 ? "## " : "") text
  next
}
at_top { print "/// @file"; at_top = 0; next }

/^\/\/ ---- .* -+$/ {
  gsub(/^\/\/ ---- | -+$/, "")
  print (grouped ? "/** @} */ " : "") "/** @name " $0
  grouped = in_heading = 1
  next
}
in_heading && /^(\/\/( .*)?)?$/ {
  # Prints each line with a delay of one line, so that the last line, which is empty, can end the comment.
  if (late++) print text
  text = substr(links($0), 3)
  next
}
in_heading { print "*/ /** @{ */"; in_heading = late = 0 }
{ print links($0) }
END { if (grouped) print "/** @} */" }
