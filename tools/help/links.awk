# Reads documents in Markdown and HTML pages, each of them twice, and prints "FILE:LINE:TARGET, tab, FILE" for each
# link to a file, and the same with "-" for a link to a heading that isn't there and for a page without a link to it.

FNR == 1 {
    if (FILENAME in seen) {
        linking = 1
    }
    seen[FILENAME] = 1
    is_html = FILENAME ~ /\.html$/
    folder = FILENAME
    sub(/[^\/]*$/, "", folder)
    fenced = 0
}
/^```/ { fenced = !fenced }
is_html && !linking { collect_names($0) }
is_html && linking { collect_links($0, " (href|src)=\"[^\"]*\"", "\"", 2) }
# Code is no text.
!is_html && !fenced && !/^    / && linking { collect_links(without_code($0), "\\]\\([^)]*\\)", "[()]", 2) }
!is_html && !fenced && !linking && /^#+ / { name_heading($0) }
END {
    for (page in seen) {
        if (page ~ /\.html$/ && page !~ /(^|\/)index\.html$/ && !(page in reached)) {
            print page ":1:no link leads here\t-"
        }
    }
}

function collect_names(line, name) {
    while (match(line, / id="[^"]*"/)) {
        name = substr(line, RSTART + 5, RLENGTH - 6)
        headings[FILENAME "#" name] = 1
        line = substr(line, RSTART + RLENGTH)
    }
}

# As programs that show Markdown name it.
function name_heading(line, name) {
    sub(/^#+ /, "", line)
    name = tolower(line)
    gsub(/[^a-z0-9 _-]/, "", name)
    gsub(/ /, "-", name)
    headings[FILENAME "#" name] = 1
}

function without_code(line) {
    gsub(/`[^`]*`/, "", line)
    return line
}

function collect_links(line, pattern, mark, at, piece) {
    while (match(line, pattern)) {
        split(substr(line, RSTART, RLENGTH), piece, mark)
        check(piece[at])
        line = substr(line, RSTART + RLENGTH)
    }
}

function check(target, file, name) {
    if (target ~ /^[a-z]+:/) {
        return
    }
    file = name = target
    sub(/#.*/, "", file)
    file = file == "" ? FILENAME : plain(folder file)
    if (file != FILENAME) {
        reached[file] = 1
    }
    print FILENAME ":" FNR ":" target "\t" file
    if (sub(/^[^#]*#/, "", name) && (file in seen) && !((file "#" name) in headings)) {
        print FILENAME ":" FNR ":" target "\t-"
    }
}

# Without "folder/../".
function plain(path) {
    while (sub(/[^\/.]+\/\.\.\//, "", path)) {
    }
    return path
}
