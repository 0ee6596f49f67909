# Prints the contents or the index of a compiled help: awk -v kind=contents|index HEADINGS KEYWORDS, with what
# headings.awk printed, and lines "page, words separated by commas".

BEGIN {
    FS = "\t"
    print "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">"
    print "<html>\n<head></head>\n<body>"
    if (kind == "contents") {
        print "<object type=\"text/site properties\">\n<param name=\"Window Styles\" value=\"0x800025\">\n</object>"
    }
    print "<ul>"
    depth = 1
}
FNR == 1 { ++file }
file == 1 && kind == "contents" && $2 <= 2 {
    nest($2)
    entry($4, $1 ($2 == 1 ? "" : "#" $3))
}
file == 1 && kind == "index" && $2 <= 3 { keyword($4, $1 ($2 == 1 ? "" : "#" $3)) }
file == 2 && kind == "index" {
    words = split($2, word, /, */)
    for (i = 1; i <= words; ++i) {
        keyword(word[i], $1 ".html")
    }
}
END {
    if (kind == "contents") {
        nest(1)
    } else {
        sort()
        for (i = 1; i <= count; ++i) {
            entry(texts[i], targets[i])
        }
    }
    print "</ul>\n</body>\n</html>"
}

function nest(level) {
    for (; depth < level; ++depth) {
        print "<ul>"
    }
    for (; depth > level; --depth) {
        print "</ul>"
    }
}

function entry(text, target) {
    print "<li><object type=\"text/sitemap\">"
    print "<param name=\"Name\" value=\"" text "\">"
    print "<param name=\"Local\" value=\"" target "\">"
    print "</object></li>"
}

# A command's parameters stay away.
function keyword(text, target) {
    sub(/\[? ?&lt;.*/, "", text)
    texts[++count] = text
    targets[count] = target
}

# By insertion: there are a few hundred.
function sort(i, j, text, target) {
    for (i = 2; i <= count; ++i) {
        text = texts[i]
        target = targets[i]
        for (j = i - 1; j >= 1 && tolower(texts[j]) > tolower(text); --j) {
            texts[j + 1] = texts[j]
            targets[j + 1] = targets[j]
        }
        texts[j + 1] = text
        targets[j + 1] = target
    }
}
