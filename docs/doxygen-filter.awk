# Hands the headers' plain // comments to Doxygen as documentation. A comment before a declaration
# documents it; before several declarations in a row it documents the group, which Doxygen gives to each
# member. A comment after a declaration on its line documents that member. The file's opening comment
# describes the class it names first ("uiDialog: ..."), or else the file and its first class or enum
# without a comment of its own. '<' in comments is literal; macro definitions pass through as they are.
BEGIN { # the classes the file defines
    while ((getline text < ARGV[1]) > 0)
        if (match(text, /^(class|struct) (UI_API )?[A-Za-z_]+ /)) {
            name = substr(text, RSTART, RLENGTH - 1); sub(/^(class|struct) (UI_API )?/, "", name); defined[name] = 1
        }
    close(ARGV[1])
}
function flush_group() { if (open) { print "///@}"; open = 0 } }
function doc(text) { sub(/\/\//, "///", text); gsub(/</, "\\<", text); return text }
function scope(text) {
    return text ~ /^[ \t]*(public|protected|private):/ || text ~ /^[ \t]*[{}]/ ||
           text ~ /^[ \t]*(class|struct|enum|union|namespace|typedef struct|template)[ \t<]/
}
{
    line = $0
    if (NR == 1 && match(line, /^\/\/ [A-Za-z_]+: /) && (substr(line, 4, RLENGTH - 5) in defined)) {
        print "/// \\class " substr(line, 4, RLENGTH - 5); print doc(line); head = 1; next
    }
    if (NR == 1 && line ~ /^\/\/ /) { print "/// \\file"; about = doc(line) "\n"; print doc(line); head = 2; next }
    if (head && line ~ /^\/\//) { print doc(line); if (head == 2) about = about doc(line) "\n"; next }
    head = 0
    if (continued) { continued = line ~ /\\$/; print line; next } # inside a macro's definition
    continued = line ~ /\\$/
    if (about != "" && comments == "" && line ~ /^(class|struct|enum) [^;]*$/) { printf "%s", about; about = "" }
    if (line ~ /^[ \t]*\/\/( |$)/) { comments = comments doc(line) "\n"; next }
    if (line ~ /^[ \t]*$/ || scope(line)) flush_group()
    if (comments != "") {
        if (!scope(line) && line !~ /^[ \t]*#/) { flush_group(); print "///@{"; open = 1 }
        printf "%s", comments; comments = ""
    }
    if (match(line, /[;,{}][ \t]*\/\/ /)) line = substr(line, 1, RSTART) " ///< " substr(line, RSTART + RLENGTH)
    print line
}
END { flush_group() }
