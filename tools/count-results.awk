# Counts test cases from CTest's JUnit file:
#   awk -v reports=DIR -v expected="NAME..." -f count-results.awk JUNIT
#
# A test that left a GoogleTest report, reports/NAME.xml, counts with its cases; any other test counts
# as one. A program that CTest calls failed although its report shows no failed case, such as one
# that crashed or ran out of time, adds one failure, and so do an empty report and an expected test that
# CTest didn't run. Prints "PASSED FAILED SKIPPED" and then the failed tests' names, one a line.

function attribute(line, name,    at) {
    at = index(line, " " name "=\"")
    if (at == 0) {
        return ""
    }
    line = substr(line, at + length(name) + 3)
    return substr(line, 1, index(line, "\"") - 1)
}

function fail(what) {
    failed++
    failures = failures what "\n"
}

# Whether the line ends inside quoted text, which may look like anything.
function in_quoted_text(line, before) {
    while (1) {
        if (before) {
            if (!index(line, "]]>")) {
                return 1
            }
            line = substr(line, index(line, "]]>") + 3)
        } else if (!index(line, "<![CDATA[")) {
            return 0
        } else {
            line = substr(line, index(line, "<![CDATA[") + 9)
        }
        before = !before
    }
}

# Reads one GoogleTest report; returns the number of cases in it, or -1 when there is none.
function read_report(name,    file, line, cases, current, found, quoted) {
    file = reports "/" name ".xml"
    found = quoted = 0
    reportFailed = 0
    while ((getline line < file) > 0) {
        found = 1
        if (quoted) {
            # Nothing of the report's own.
        } else if (line ~ /<testcase /) {
            current = attribute(line, "classname") "." attribute(line, "name")
            currentFailed = 0
            if (attribute(line, "result") == "completed") {
                cases++
                passed++
            } else {
                skipped++
            }
        } else if (line ~ /<failure / && !currentFailed) {
            currentFailed = 1
            passed--
            reportFailed++
            fail(name ": " current)
        }
        quoted = in_quoted_text(line, quoted)
    }
    close(file)
    return found ? cases + 0 : -1
}

/<testcase / {
    name = attribute($0, "name")
    status = attribute($0, "status")
    if (status == "disabled") {
        skipped++
        next
    }
    wasRun[name] = 1
    cases = read_report(name)
    if (status != "run" && (cases < 0 || reportFailed == 0)) {
        fail(name ": " (status == "notrun" ? "could not be run" : "failed as a whole"))
    } else if (cases == 0) {
        fail(name ": its report holds no case that was run")
    } else if (cases < 0) {
        passed++
    }
}

END {
    count = split(expected, programs, " ")
    for (i = 1; i <= count; i++) {
        if (programs[i] != "" && !(programs[i] in wasRun)) {
            fail(programs[i] ": was not run")
        }
    }
    printf "%d %d %d\n%s", passed, failed, skipped, failures
}
