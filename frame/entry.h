// The inside of an export: the function that the export's slot points to.
#pragma once

#include <zrfgen/transforms.h>

#ifdef __FAST_MATH__
#error "zrfgen promises the same bits from every build: compile it without -ffast-math and -Ofast."
#endif

// The name of the implementation behind an export. It has the export's own signature, since the entry stub
// jumps to it with the caller's frame as it stands.
#define ZRF_BODY(name) name##_body
