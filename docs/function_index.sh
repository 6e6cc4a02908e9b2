#!/bin/sh
# function_index.sh: from the names of all exports, one per line, to a page for Doxygen that lists them by family.
set -eu
sort -V | awk '
    BEGIN {
        split("CToC:complex_dft RTo:real_dft ToR:real_dft Hartley:hartley WHT:walsh_hadamard DCT4:dct4 Lib:contract",
              pages, " ")
    }
    {
        family = $0
        sub(/(_[0-9]+)?_(32|64)fc?$/, "", family)
        if (family in names)
            names[family] = names[family] ", " $0 "()"
        else {
            families[++count] = family
            names[family] = $0 "()"
        }
        ++total
    }
    END {
        print "# All functions\n\n" total " functions. A name leads to its declaration.\n"
        for (i = 1; i <= count; ++i) {
            for (p in pages) {
                split(pages[p], page, ":")
                if (index(families[i], page[1]))
                    print "## " families[i] "\n\n[What they do](@ref md_docs_reference_" page[2] "). " names[families[i]] "\n"
            }
        }
    }'
