# page.awk: creates a complete HTML page from the output of cmark-gfm for a Markdown document.
#
#   cmark-gfm --extension table manual.md | LC_ALL=C awk -f page.awk -v pages="manual troubleshooting" >manual.html
#
# Headings get the same ids as on GitHub, so that links to sections work. Links to the named pages lead to their HTML
# files. Links to other documents of the project, which are not installed, become plain text.

BEGIN {
    count = split(pages, names, " ")
    for (i = 1; i <= count; i++)
        isPage[names[i]]
}

# The id of a heading.
function idOf(heading)
{
    gsub(/<[^>]*>/, "", heading)
    gsub(/&[a-z]+;/, "", heading)
    heading = tolower(heading)
    gsub(/[^a-z0-9 _-]/, "", heading)
    gsub(/ /, "-", heading)
    return heading
}

# The target of a link on these pages; empty if there is none.
function targetOf(href,   file, section)
{
    if (href ~ /^(#|https?:)/)
        return href
    file = section = href
    sub(/#.*/, "", file)
    sub(/^[^#]*/, "", section)
    return sub(/[.]md$/, "", file) && file in isPage ? file ".html" section : ""
}

function withLinks(line,   out, href, end, label)
{
    while (match(line, /<a href="[^"]*">/)) {
        href = targetOf(substr(line, RSTART + 9, RLENGTH - 11))
        out = out substr(line, 1, RSTART - 1)
        line = substr(line, RSTART + RLENGTH)
        end = index(line, "</a>")
        if (!end) {
            print "page.awk: a link continues on the next line: " line >"/dev/stderr"
            failed = 1
            exit 1
        }
        label = substr(line, 1, end - 1)
        line = substr(line, end + 4)
        out = out (href == "" ? label : "<a href=\"" href "\">" label "</a>")
    }
    return out line
}

/^<h[1-6]>/ {
    sub(/^<h[1-6]/, "& id=\"" idOf($0) "\"")
}

title == "" && /^<h1/ {
    title = $0
    gsub(/<[^>]*>/, "", title)
}

{
    body = body withLinks($0) "\n"
}

END {
    if (failed)
        exit 1
    print "<!DOCTYPE html>"
    print "<html lang=\"en\">"
    print "<head>"
    print "<meta charset=\"utf-8\" />"
    print "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\" />"
    print "<title>" title " - ZV Tolvar Setup</title>"
    print "<style>"
    print ":root { color-scheme: light dark; }"
    print "body { max-width: 48rem; margin: 2rem auto; padding: 0 1rem; font-family: sans-serif; line-height: 1.5; }"
    print "img { max-width: 100%; }"
    print "table { border-collapse: collapse; }"
    print "th, td { border: 1px solid #888; padding: 0.3rem 0.6rem; text-align: left; vertical-align: top; }"
    print "pre { overflow-x: auto; padding: 0.6rem; border: 1px solid #888; }"
    print "</style>"
    print "</head>"
    print "<body>"
    printf "%s", body
    print "</body>"
    print "</html>"
}
