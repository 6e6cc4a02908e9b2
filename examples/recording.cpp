#include "recording.h"

#include <sndfile.hh>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace {

// libsndfile reads what there is and keeps a log of what the header states.
std::string lengthRemark(SndfileHandle &file) {
    char log[4096] = "";
    file.command(SFC_GET_LOG_INFO, log, sizeof log);
    const char *const line = std::strstr(log, "\ndata : ");
    unsigned long long stated, held;
    if (line == nullptr || std::sscanf(line, "\ndata : %llu (should be %llu)", &stated, &held) != 2 ||
        stated <= held)
        return "";
    return "the file is cut off: it holds " + std::to_string(held) + " bytes of samples, its header states " +
           std::to_string(stated);
}

} // namespace

Recording readRecording(const std::string &path) {
    const auto fail = [&path](const std::string &problem) {
        throw std::runtime_error("'" + path + "' " + problem);
    };
    if (access(path.c_str(), R_OK) != 0)
        fail(std::string("cannot be opened (") + std::strerror(errno) + "); check the path");
    if (std::filesystem::is_directory(path))
        fail("is a directory; name a sound file in it");

    SndfileHandle file(path);
    if (!file.rawHandle())
        fail("is not a readable recording; give a sound file such as WAV, FLAC, Ogg or AIFF");
    if (file.samplerate() < 1 || file.channels() < 1)
        fail("has a damaged header; export the recording again");

    Recording recording{{}, file.samplerate(), file.channels(), 0, lengthRemark(file)};
    constexpr sf_count_t blockFrames = 4096;
    std::vector<float> block(blockFrames * recording.channels);
    while (const sf_count_t count = file.readf(block.data(), blockFrames)) {
        for (sf_count_t i = 0; i < count; ++i) {
            float sum = 0;
            for (int c = 0; c < recording.channels; ++c) {
                sum += block[i * recording.channels + c];
                recording.loudestInput =
                    std::max(recording.loudestInput, std::abs(block[i * recording.channels + c]));
            }
            // Far above any real level, yet low enough that no power computed from it overflows.
            if (!(std::abs(sum) < 1e15f))
                fail("holds samples that are no usable numbers; export the recording again");
            recording.samples.push_back(sum / recording.channels);
        }
    }
    if (file.error())
        fail("is damaged; export the recording again");
    if (recording.samples.empty())
        fail("holds no samples; give a recording with sound in it");
    return recording;
}
