#pragma once

#include "picture.h"
#include "short_time_transform.h"

// How many time columns the plot can show.
constexpr int plotWidth = 1000;

// Time to the right, frequency upwards, the level as colour.
Picture drawSpectrogram(const Spectrogram &spectrogram, double duration, int sampleRate);
