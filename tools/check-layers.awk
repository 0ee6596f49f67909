# awk -f check-layers.awk layers.txt standard-names.txt FILE...: see check-layers.

BEGIN {
    split("algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv" \
        " chrono cinttypes climits clocale cmath codecvt compare complex concepts condition_variable" \
        " coroutine csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar" \
        " cwctype deque exception execution filesystem forward_list fstream functional future" \
        " initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map" \
        " memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio" \
        " regex scoped_allocator semaphore set shared_mutex source_location span sstream stack" \
        " stdexcept stop_token streambuf string string_view syncstream system_error thread tuple" \
        " type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector" \
        " version", list, " ")
    for (i in list) {
        standard[list[i]] = 1
    }
    for (i = 3; i < ARGC; i++) {
        known[ARGV[i]] = 1
    }
}

function violation(file, line, text) {
    print file ":" line ": " text
    violations++
}

function is_in_list(item, list) {
    return list == "*" || index("," list ",", "," item ",") > 0
}

function folder_of(file) {
    sub(/\/[^\/]*$/, "", file)
    return file
}

# The layer of a file: the one with the longest folder that fits.
function layer_of(file,    folder, best, length_) {
    length_ = 0
    for (folder in layers) {
        if (index(file, folder "/") == 1 && length(folder) > length_) {
            length_ = length(folder)
            best = layers[folder]
        }
    }
    return best
}

# Where an include in quotes leads, or nothing.
function resolve(file, name,    folder) {
    folder = folder_of(file)
    if ((folder "/" name) in known) {
        return folder "/" name
    }
    if (("src/" name) in known) {
        return "src/" name
    }
    return (name in known) ? name : ""
}

function check_project_header(name,    target, layer) {
    target = resolve(FILENAME, name)
    if (target == "") {
        violation(FILENAME, FNR, "includes \"" name "\", which is not a file of this project")
        return
    }
    layer = layer_of(target)
    if (layer != own && !is_in_list(layer, may[own])) {
        violation(FILENAME, FNR, own " may not include " layer ": \"" name "\"")
    } else {
        add_folder_edge(folder_of(FILENAME), folder_of(target))
    }
    edges[FILENAME] = edges[FILENAME] target "\n"
}

# Remembers one include for each pair of folders.
function add_folder_edge(from, to) {
    if (from != to && !((from, to) in example)) {
        example[from, to] = FILENAME
        example_line[from, to] = FNR
        folder_edges[from] = folder_edges[from] to "\n"
    }
}

function check_foreign_header(name,    library) {
    given[FILENAME, name] = 1
    library = name
    sub(/[\/.].*$/, "", library)
    if (name in standard || is_in_list(library, libraries[own]) || \
        FILENAME ~ /\/(windows|posix)\//) {
        return
    }
    violation(FILENAME, FNR, own " may not include <" name \
        ">: only folders named windows or posix use the platform's headers")
}

# Follows the includes from a file; a file met again on its own path closes a ring.
function visit(file, path,    targets, n, i) {
    state[file] = "open"
    n = split(edges[file], targets, "\n")
    for (i = 1; i < n; i++) {
        if (state[targets[i]] == "open") {
            violation(file, 1, "includes itself: " path " > " targets[i])
        } else if (state[targets[i]] == "") {
            visit(targets[i], path " > " targets[i])
        }
    }
    state[file] = "done"
}

# Likewise from a folder. Each include that closes a circle of folders is found.
function visit_folder(folder, path,    targets, n, i, circle) {
    folder_state[folder] = "open"
    n = split(folder_edges[folder], targets, "\n")
    for (i = 1; i < n; i++) {
        if (folder_state[targets[i]] == "open") {
            circle = substr(path " > ", index(path " > ", targets[i] " > "))
            violation(example[folder, targets[i]], example_line[folder, targets[i]], \
                "folders include each other in a circle: " circle targets[i])
        } else if (folder_state[targets[i]] == "") {
            visit_folder(targets[i], path " > " targets[i])
        }
    }
    folder_state[folder] = "done"
}

# The names of std that a header uses, each with the first line that uses it.
function note_standard_names(text,    name) {
    gsub(/"([^"\\]|\\.)*"/, "", text)
    sub(/\/\/.*/, "", text)
    while (match(text, /std::[a-z_0-9]+/)) {
        name = substr(text, RSTART + 5, RLENGTH - 5)
        text = substr(text, RSTART + RLENGTH)
        if (!((FILENAME, name) in used)) {
            used[FILENAME, name] = FNR
        }
    }
}

# Whether a file includes one of these headers, itself or through the project's headers.
function includes_any(file, headers, n, met,    targets, count, i) {
    if (file in met) {
        return 0
    }
    met[file] = 1
    for (i = 1; i <= n; i++) {
        if ((file, headers[i]) in given) {
            return 1
        }
    }
    count = split(edges[file], targets, "\n")
    for (i = 1; i < count; i++) {
        if (includes_any(targets[i], headers, n, met)) {
            return 1
        }
    }
    return 0
}

function check_standard_name(file, name,    headers, n, met) {
    n = split(givers[name], headers, " ")
    if (n == 0) {
        violation(file, used[file, name], "uses std::" name ", which tools/standard-names.txt does not list")
    } else if (!includes_any(file, headers, n, met)) {
        violation(file, used[file, name], "uses std::" name " without <" headers[1] ">")
    }
}

NR == FNR {
    if ($0 !~ /^#/ && NF == 4) {
        layers[$2] = $1
        may[$1] = $3
        libraries[$1] = $4
    }
    next
}

FILENAME == ARGV[2] {
    if ($0 !~ /^#/) {
        sub(/:$/, "", $1)
        for (i = 2; i <= NF; i++) {
            givers[$i] = givers[$i] $1 " "
        }
    }
    next
}

FNR == 1 {
    own = layer_of(FILENAME)
    if (own == "") {
        violation(FILENAME, 1, "is in a folder that no layer names: see tools/layers.txt")
    }
}

own != "" && /^[ \t]*#[ \t]*include/ {
    name = $0
    sub(/^[ \t]*#[ \t]*include[ \t]*/, "", name)
    if (name ~ /^"[^"]+"/) {
        check_project_header(substr(name, 2, index(substr(name, 2), "\"") - 1))
    } else if (name ~ /^<[^>]+>/) {
        check_foreign_header(substr(name, 2, index(name, ">") - 2))
    } else {
        violation(FILENAME, FNR, "includes something that is not written out: " name)
    }
}

FILENAME ~ /\.h$/ && /std::/ {
    note_standard_names($0)
}

END {
    for (key in used) {
        split(key, parts, SUBSEP)
        check_standard_name(parts[1], parts[2])
    }
    for (i = 3; i < ARGC; i++) {
        if (state[ARGV[i]] == "") {
            visit(ARGV[i], ARGV[i])
        }
        folder = folder_of(ARGV[i])
        if (folder_state[folder] == "") {
            visit_folder(folder, folder)
        }
    }
    exit violations > 0
}
