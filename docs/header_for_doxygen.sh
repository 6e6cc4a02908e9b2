#!/bin/sh
# header_for_doxygen.sh HEADER: the types of the C header with their comments, and every function in the
# order of lengths with a line of its own.
set -eu
header=$1

echo "/** @file transforms.h The interface of the library in C. */"
echo "/** @defgroup functions All functions */"
# Comments before types and behind their members.
awk '
    /^\/\*/ { comment = ""; isComment = 1 }
    isComment { comment = comment $0 "\n"; if (/\*\/$/) isComment = 0; next }
    /^(typedef|enum)/ && !/ (Float|Complex)(32|64);| Status;| Dct4Plan;| LibraryVersion;/ {
        sub(/^\/\*/, "/**", comment)
        printf "%s", comment
        isType = 1
    }
    isType { gsub(/\/\* /, "/**< "); print; if (/;$/ && !/^ /) { isType = 0; print "" } }
    { comment = "" }' "$header"

cc -E -P -x c "$header" | tr '\n' ' ' | sed 's/;/;\n/g' |
    sed -n 's/ ;$/;/; s/^ *\(.*[ *]\(zrfg[A-Za-z]*Get*[A-Za-z]*\|zrfg[A-Za-z0-9_]*\)(.*;\)$/\2 \1/p' |
    sort -V | awk '
    function page(family) {
        if (family ~ /CToC/) return "complex-dft"
        if (family ~ /RTo|ToR/) return "real-dft"
        if (family == "Hartley") return "hartley"
        if (family ~ /^WHT/) return "walsh-hadamard"
        return family ~ /^DCT4/ ? "dct4" : "contract"
    }
    BEGIN {
        text["DFTFwd_CToC"] = "Forward complex DFT"
        text["DFTInv_CToC"] = "Inverse complex DFT"
        text["Hartley"] = "Hartley transform"
        text["WHT"] = "Walsh-Hadamard transform"
        text["WHTGetBufferSize"] = "The bytes of the buffer that a Walsh-Hadamard transform works in"
        text["DCT4"] = "DCT-IV by a plan"
        text["DCT4GetSize"] = "The bytes that a plan of the DCT-IV takes"
        text["DCT4Init"] = "Lays a plan of the DCT-IV into memory of the caller"
        text["DCT4InitAlloc"] = "Makes a plan of the DCT-IV in allocated memory"
        text["DCT4Free"] = "Releases a plan of the DCT-IV that was made in allocated memory"
        text["enGetLibVersion"] = "The record that identifies the library"
        count = split("CCS Pack Perm", layouts, " ")
        for (i = 1; i <= count; ++i) {
            text["DFTFwd_RTo" layouts[i]] = "Forward DFT of real elements to a spectrum in " layouts[i] " layout"
            text["DFTInv_" layouts[i] "ToR"] = "Inverse DFT of a spectrum in " layouts[i] " layout to real elements"
        }
        element["32f"] = "zrfFloat32"; element["64f"] = "zrfFloat64"
        element["32fc"] = "zrfComplex32"; element["64fc"] = "zrfComplex64"
    }
    {
        name = $1
        sub(/^[^ ]* /, "")
        family = suffix = size = name
        sub(/^zrfg/, "", family)
        sub(/(_[0-9]+)?_(32|64)fc?$/, "", family)
        sub(/.*_/, "", suffix)
        sub(/_[^_]*$/, "", size)
        sub(/.*_/, "", size)
        elements = suffix in element ? ": " element[suffix] : ""
        if (size ~ /^[0-9]+$/)
            elements = ": " (family == "WHT" ? 2 ^ size : size) " " element[suffix]
        if (family != last) {
            if (last != "")
                print "/** @} */"
            print "/** @defgroup " family " zrfg" family "\n * @ingroup functions"
            print " * " text[family] ": see @ref page_" page(family) ".\n * @{ */"
            last = family
        }
        print "/** " text[family] elements ". Arguments and statuses: @ref page_" page(family) ". */"
        print $0
    }
    END { print "/** @} */" }'
