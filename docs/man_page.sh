#!/bin/sh
# man_page.sh PAGE NAME SECTION VERSION: a reference page as a man page, to the standard output.
# The page's title gives way to NAME, its sections become those of a man page, pictures are left out (tables beside
# them say the same), and links to other pages become their names.
set -eu
awk '
    BEGIN {
        manual["contract.md"] = "**zrfgen**(7)"
        manual["complex-dft.md"] = "**zrfgDFTFwd_CToC**(3)"
        manual["real-dft.md"] = "**zrfgDFTFwd_RToCCS**(3)"
        manual["hartley.md"] = "**zrfgHartley**(3)"
        manual["walsh-hadamard.md"] = "**zrfgWHT**(3)"
        manual["dct4.md"] = "**zrfgDCT4**(3)"
        manual["many.md"] = "**zrfmDFTFwd_CToC**(3)"
        manual["cpp.md"] = "**zrfgen-cpp**(7)"
    }
    /^```/ { isCode = !isCode }
    isCode { print; next }
    /^!\[/ { next }
    /^# / { print "# NAME"; next }
    /^## / { print "# " toupper(substr($0, 4)); next }
    /^### / { print substr($0, 2); next }
    {
        while (match($0, /\[[^]]*\]\([^)]*\)/)) {
            link = substr($0, RSTART, RLENGTH)
            split(substr(link, 2, length(link) - 2), part, /\]\(/)
            text = part[1] (part[2] in manual ? " (" manual[part[2]] ")" : "")
            $0 = substr($0, 1, RSTART - 1) text substr($0, RSTART + RLENGTH)
        }
        print
    }' "$1" |
    lowdown -s -Tman --out-no-smarty --nroff-nolinks --parse-no-metadata --parse-no-super --parse-no-intraemph \
        -M "title=$2" -M "section=$3" -M "source=zrfgen $4" -M "volume=zrfgen" -M "date=" |
    # The first line asks for tbl. No words are broken, least of all names. Tables take the room that they need, which
    # tbl knows of cells that are no text blocks, and a line's distance from what follows.
    sed -z 's/T{\n\([^\nT][^\n]\{0,31\}\)\nT}/\1/g' |
    sed -e "1i '\\\\\" t" -e '/^\.TH/a .nr HY 0\n.nh\n.ad l' -e 's/^tab(|) expand allbox;/tab(|) allbox;/' -e 's/^\.TE$/.TE\n.sp/'
