# Cuts a document in Markdown into the pages of a help: awk -v folder=DIR. Prints the pages' names in order.
#
# A page begins at "<!-- topic: NAME -->" and goes into folder/NAME.md; "<!-- topic: NAME; index: WORD, WORD -->"
# also names words under which it is found. A document without any is one page of the document's name. A page's
# first heading is its title, whatever its level was in the document.

FNR == 1 {
    name = FILENAME
    sub(/.*\//, "", name)
    sub(/\.md$/, "", name)
    begin(name, "")
}
/^<!-- topic: .* -->$/ {
    words = $0
    sub(/^<!-- topic: /, "", words)
    sub(/ -->$/, "", words)
    name = words
    sub(/;.*/, "", name)
    sub(/^[^;]*(; index: )?/, "", words)
    begin(name, words)
    next
}
/^#+ / && raise < 0 {
    match($0, /^#+/)
    raise = RLENGTH - 1
}
/^#+ / { $0 = substr($0, raise + 1) }
{
    if (page != "") {
        put($0)
    }
}

function begin(name, words) {
    page = name
    raise = -1
    keywords = words
    started = 0
}

# A page without any text, as before the first topic, is none.
function put(line) {
    if (!started && line == "") {
        return
    }
    if (!started) {
        started = 1
        print page
        if (keywords != "") {
            print page "\t" keywords >(folder "/keywords")
        }
    }
    print line >(folder "/" page ".md")
}
