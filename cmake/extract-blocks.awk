# Writes the fenced code blocks of a Markdown page whose info string names a file (```cpp main.cpp) into
# that file under `dir`; the blocks of one file are joined in page order. Other blocks are skipped.
#   awk -v dir=<folder> -f extract-blocks.awk page.md
inside && /^```[ \t]*$/ { inside = 0; name = ""; next }
inside { if (name != "") print > (dir "/" name); next }
/^```/ {
    inside = 1
    name = NF >= 2 ? $2 : ""
    if (name != "" && !(name in seen)) {
        seen[name] = 1
        system("mkdir -p \"$(dirname '" dir "/" name "')\"")
        printf "" > (dir "/" name)
    }
}
