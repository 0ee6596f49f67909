# Reads headers, whose paths are relative to the project, and prints chains of them, one a line: each
# header of a chain includes those before it. These are read before the header's own text in any case, so
# that a file which includes a chain in this order compiles each of its headers as if it stood alone.

FNR == 1 {
    name = FILENAME
    count++
    names[count] = name
    known[name] = 1
}

match($0, /^#include "[^"]+"/) {
    included[name] = included[name] " " substr($0, 11, RLENGTH - 11)
}

# The file that an include names, from the project's folder or from src.
function file(include) {
    return include in known ? include : "src/" include
}

# Finds all that a header includes, one through another. The number orders headers along any chain: what
# another includes has the smaller one.
function close_over(header, size, i, j, direct, one, all) {
    if (header in number) {
        return
    }
    number[header] = 0
    size = split(included[header], direct, " ")
    for (i = 1; i <= size; i++) {
        one = file(direct[i])
        if (one in known) {
            close_over(one)
            reached[header, one] = 1
            split(everything[one], all, " ")
            for (j in all) {
                reached[header, all[j]] = 1
            }
        }
    }
    for (i = 1; i <= count; i++) {
        if ((header, names[i]) in reached) {
            everything[header] = everything[header] " " names[i]
            number[header]++
        }
    }
}

# Among what a header includes, that without a chain yet which includes the most; empty if there is none.
function largest_within(header, size, i, all, best) {
    size = split(everything[header], all, " ")
    for (i = 1; i <= size; i++) {
        if (!(all[i] in placed) && (best == "" || number[all[i]] > number[best])) {
            best = all[i]
        }
    }
    return best
}

END {
    for (i = 1; i <= count; i++) {
        close_over(names[i])
    }
    # The longest chains begin at the headers that include the most.
    for (most = count; most >= 0; most--) {
        for (i = 1; i <= count; i++) {
            header = names[i]
            if (number[header] == most && !(header in placed)) {
                chain = ""
                for (; header != ""; header = largest_within(header)) {
                    placed[header] = 1
                    chain = header (chain == "" ? "" : " " chain)
                }
                print chain
            }
        }
    }
}
