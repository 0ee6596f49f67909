# Gives each heading of HTML pages a name to link to: awk -v folder=DIR PAGE... writes the pages into the folder
# and prints a line "page, level, name, text" for each heading, separated by tabs.

FNR == 1 {
    page = FILENAME
    sub(/.*\//, "", page)
    delete used
}
/^<h[1-6]>.*<\/h[1-6]>$/ {
    level = substr($0, 3, 1)
    text = substr($0, 5, length($0) - 9)
    gsub(/<[^>]*>/, "", text)
    name = name_of(text)
    print page "\t" level "\t" name "\t" text
    $0 = "<h" level " id=\"" name "\">" substr($0, 5)
}
{ print >(folder "/" page) }

# As programs that show Markdown name it, so that one link serves both.
function name_of(text, name) {
    name = tolower(text)
    gsub(/&[a-z]+;/, "", name)
    gsub(/[^a-z0-9 _-]/, "", name)
    gsub(/ /, "-", name)
    if (used[name]++ > 0) {
        name = name "-" (used[name] - 1)
    }
    return name
}
