#!/bin/sh
# The kernelgen command line: each bad line is refused with one clear message and a failing status.
kernelgen=$1
failures=0

expect() { # expect STATUS PATTERN ARGUMENTS...
    status=$1 pattern=$2
    shift 2
    output=$("$kernelgen" "$@" 2>&1)
    if [ $? -ne "$status" ] || ! printf '%s\n' "$output" | grep -q "$pattern"; then
        printf 'kernelgen %s: expected status %s and "%s", got: %s\n' "$*" "$status" "$pattern" "$output"
        failures=$((failures + 1))
    fi
}

expect 0 '38 additions (.* and 8 for the scale' explain zrfgDFTFwd_CToC_16_32fc
expect 0 ' 172 multiplications and 33 for the scale' --target i386 explain zrfgDFTFwd_RToPack_33_64f
expect 0 'first pairs    (3, 30) (6, 27) (9, 24) (12, 21) (15, 18) ' explain zrfgDFTFwd_RToPack_33_64f
expect 0 '^decomposition  TF(4, 2)$' explain zrfgDFTInv_CToC_8_64fc
expect 0 'store' dump schedule zrfgDFTFwd_CToC_2_64fc
expect 0 '^zrfgenGetLibVersion$' exports zrfgen
expect 1 "no library 'zrfsome'; there are zrfgen and zrfmany" exports zrfsome
expect 0 '^lanes          127 operations on 4 elements$' explain many_DFTFwd_CToC_15_32fc
expect 0 '^real_forward_33_64f.cpp$' file zrfgDFTFwd_RToPack_33_64f
expect 1 "no kernel is in a file 'soup.cpp'" emit /nowhere soup.cpp
expect 1 'is no export' explain zrfgDFTFwd_CToC_65_32fc
expect 0 '(112 add, 112 sub, 0 both in turn), 0 multiplications and 32 for the scale' explain zrfgWHT_7_32f
expect 1 'is written by hand' explain zrfgWHT_8_32f
expect 1 "no layer 'soup'" dump soup zrfgDFTFwd_CToC_2_64fc
expect 1 "no target 'avx9'; there are: sse3" --target avx9 exports zrfgen
expect 1 'PF(2, 4): the factors are not coprime$' try zrfgDFTFwd_CToC_8_32fc 'SplitPairs PF(2, 4)' /nowhere
expect 1 'zrfgWHT_5_32f has no recipe' try zrfgWHT_5_32f 'T(4, 2)' /nowhere
expect 1 '^usage: ' explain
expect 1 '^usage: ' bake
expect 1 '^usage: '
[ "$failures" -eq 0 ]
