#!/usr/bin/env bash
# compilers_test.sh SOURCES INCLUDES GENERATED COMPILER [OPTION...]: the compiler takes kernels of every kind, for the
# target of a folder of generated texts and those in folders of it.
set -euo pipefail
shopt -s nullglob
sources=$1 includes=$2 generated=$3
shift 3
for folder in "$generated" "$generated"/*/; do
    read -ra target < <(sed -n 's/^set(targetOptions \(.*\))$/\1/p' "$folder/zrfgen.cmake")
    for kernel in dft_15_32fc dft_16_64fc real_forward_10_32f real_inverse_20_32f hartley_12_64f wht_5_32f \
        many_DFTFwd_CToC_15_32fc many_DFTFwd_RToCCS_10_32f; do
        echo "$folder/$kernel.cpp"
        "$@" "${target[@]}" -std=c++20 -O2 -fno-exceptions -fno-rtti -I"$sources" -I"$sources/frame" -I"$includes" \
            -I"$folder" -c "$folder/$kernel.cpp" -o /dev/null
    done
done
