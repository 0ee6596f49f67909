# Makes whole pages of a help of their contents: awk -v folder=DIR -v title=TITLE -v navigation=yes|no
# HEADINGS PAGE... with what headings.awk printed. Links between documents become links between pages; one that
# leads nowhere ends the work. With navigation, each page begins with the list of all.

BEGIN { FS = "\t" }
NR == FNR {
    anchors[$1 "#" $3] = 1
    if (!($3 in page_of)) {
        page_of[$3] = $1
    }
    if ($2 == 1) {
        pages[++count] = $1
        title_of[$1] = $4
    } else if ($2 == 2) {
        within[$1] = within[$1] "\n<li><a href=\"" $1 "#" $3 "\">" $4 "</a></li>"
    }
    next
}
FNR == 1 {
    end_page()
    page = FILENAME
    sub(/.*\//, "", page)
    begin_page()
}
{ put(with_links($0)) }
END { end_page() }

function put(text) {
    print text >(folder "/" page)
}

function begin_page() {
    put("<!DOCTYPE html>")
    put("<html lang=\"en\">")
    put("<head>")
    put("<meta charset=\"utf-8\">")
    put("<meta http-equiv=\"X-UA-Compatible\" content=\"IE=edge\">")
    put("<meta name=\"viewport\" content=\"width=device-width\">")
    put("<title>" title_of[page] (title_of[page] == title ? "" : " - " title) "</title>")
    put("<link rel=\"stylesheet\" href=\"style.css\">")
    put("</head>")
    put("<body" (navigation == "yes" ? " class=\"with-contents\"" : "") ">")
    if (navigation == "yes") {
        put_navigation()
    }
    put("<div class=\"page\">")
}

function put_navigation(i) {
    put("<div class=\"contents\">")
    put("<ul>")
    for (i = 1; i <= count; ++i) {
        put(entry(pages[i]))
    }
    put("</ul>")
    put("</div>")
}

function entry(other) {
    if (other != page) {
        return "<li><a href=\"" other "\">" title_of[other] "</a></li>"
    }
    return "<li><b>" title_of[other] "</b>" \
        (other in within ? "<ul>" within[other] "\n</ul>" : "") "</li>"
}

function end_page() {
    if (page != "") {
        put("</div>")
        put("</body>")
        put("</html>")
        close(folder "/" page)
    }
}

function with_links(line, done, target) {
    done = ""
    while (match(line, / href="[^"]*"/)) {
        target = substr(line, RSTART + 7, RLENGTH - 8)
        done = done substr(line, 1, RSTART) "href=\"" link(target) "\""
        line = substr(line, RSTART + RLENGTH)
    }
    return done line
}

function link(target, file, name) {
    if (target ~ /^[a-z]+:/) {
        return target
    }
    file = name = target
    sub(/#.*/, "", file)
    if (!sub(/^[^#]*#/, "", name)) {
        name = ""
    }
    # The guide is several pages; a heading tells which.
    if (file == "user-guide.md") {
        file = name == "" ? "index.html" : page_of[name]
    } else if (file == "") {
        file = ((page "#" name) in anchors) ? page : page_of[name]
    } else {
        sub(/\.md$/, ".html", file)
    }
    if (!(file in title_of) || (name != "" && !((file "#" name) in anchors))) {
        printf "%s: a link to %s, which this help doesn't have\n", page, target >"/dev/stderr"
        exit 1
    }
    return (file == page && name != "" ? "" : file) (name == "" ? "" : "#" name)
}
