    $1 == "\"" list "\"" && NF == 2 { inside = 1; next }
    !inside { next }
    /^\t\]/ { exit }
    { gsub(/[",]/, "") }
    $1 == "port" { port = $3; last = "" }
    $1 == "portRangeEnd" { last = "-" $3 }
    $1 == "protocol" { entry = port last "/" $3 }
    NF == 1 { entry = $1 }
    entry ~ /^[A-Za-z0-9_.:\/-]+$/ { print entry; entry = "" }
