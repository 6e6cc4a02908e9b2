#!/bin/sh
# function_index.sh: from the names of all exports, one per line, to a Markdown page that lists them by family.
set -eu
sort -V | awk '
    BEGIN {
        split("CToC:complex-dft RTo:real-dft ToR:real-dft Hartley:hartley WHT:walsh-hadamard DCT4:dct4 Lib:contract",
              pages, " ")
    }
    {
        family = $0
        sub(/(_[0-9]+)?_(32|64)fc?$/, "", family)
        if (family in names)
            names[family] = names[family] ", " $0
        else {
            families[++count] = family
            names[family] = $0
        }
        ++total
    }
    END {
        print "# All functions\n\n" total " functions. A name leads to its declaration.\n"
        for (i = 1; i <= count; ++i) {
            for (p in pages) {
                split(pages[p], page, ":")
                if (index(families[i], page[1]))
                    print "## " families[i] "\n\n[What they do](reference/" page[2] ".md). " names[families[i]] "\n"
            }
        }
    }'
