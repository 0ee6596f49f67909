# Takes from a document in Markdown what one guide has: awk -v guide=NAME. What stands between
# "<!-- only: NAME NAME -->" and "<!-- end -->" is for the guides that are named, the rest for all.

/^<!-- only: .* -->$/ {
    if (block != "") {
        fail("a block within the one of line " block)
    }
    block = FNR
    skipped = index(" " substr($0, 12, length($0) - 15) " ", " " guide " ") == 0
    next
}
/^<!-- end -->$/ {
    if (block == "") {
        fail("the end of no block")
    }
    block = ""
    skipped = 0
    next
}
!skipped
END {
    if (block != "" && !failed) {
        fail("the block of line " block " has no end")
    }
}

function fail(text) {
    printf "%s:%d: %s\n", FILENAME, FNR, text >"/dev/stderr"
    failed = 1
    exit 1
}
