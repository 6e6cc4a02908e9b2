// One call a line whose types say sizes that do not fit, each under a comment with the message that it gets.
#include <zrfgen/transforms.hpp>

#include <array>

using zrfgen::Layout, zrfgen::Scale, std::array;

template <int N> array<std::complex<float>, N> complexes;
template <int N> array<float, N> floats;

void refused() {
    // (15 == 16)
    (void)zrfgen::dftForward(complexes<16>, complexes<15>, Scale::None);
    // (14 == 12)
    (void)zrfgen::dftInverse<12>(complexes<14>, complexes<12>, Scale::None);
    // (16 == 18)
    (void)zrfgen::realDftForward<Layout::CCS>(floats<16>, floats<16>, Scale::None);
    // (17 == 16)
    (void)zrfgen::realDftForward<Layout::Pack>(floats<16>, floats<17>, Scale::None);
    // (8 == 9)
    (void)zrfgen::realDftForward<Layout::CCS>(floats<16>, complexes<8>, Scale::None);
    // (20 == 22)
    (void)zrfgen::realDftInverse<Layout::CCS>(floats<20>, floats<21>, Scale::None);
    // (7 == 6)
    (void)zrfgen::multiplySpectra<Layout::Perm>(floats<6>, floats<6>, floats<7>);
    // lengths are 2 to 64
    (void)zrfgen::hartley(floats<65>, floats<65>, Scale::None);
    // lengths are powers of two
    (void)zrfgen::walshHadamard(floats<48>, floats<48>, Scale::None);
    // a pointer does not say the length
    (void)zrfgen::dftForward(complexes<5>.data(), complexes<5>.data(), Scale::None);
}
