#include "target/sse3_shuffle.h"

namespace zrfgen::gen {

namespace {

std::optional<Shuffle> asUnpack(const Node &gather, Shuffle::Kind kind) {
    const int lanes = gather.type.lanes, base = kind == Shuffle::Kind::UnpackLow ? 0 : lanes / 2;
    int operand[2] = {-1, -1}; // of the even and of the odd result lanes
    for (int lane = 0; lane < lanes; ++lane) {
        const int pick = gather.picks[lane];
        if (pick == idle)
            continue;
        if (pick % lanes != base + lane / 2)
            return {};
        int &source = operand[lane % 2];
        if (source != -1 && source != pick / lanes)
            return {};
        source = pick / lanes;
    }
    const int any = operand[0] == -1 ? operand[1] : operand[0];
    return Shuffle{kind, operand[0] == -1 ? any : operand[0], operand[1] == -1 ? any : operand[1], {}};
}

std::optional<Shuffle> asSelect(const Node &gather) {
    const int lanes = gather.type.lanes;
    int operand[2] = {-1, -1}; // of the lower and of the upper half
    Shuffle shuffle{Shuffle::Kind::Select, 0, 0, {}};
    for (int lane = 0; lane < lanes; ++lane) {
        const int pick = gather.picks[lane];
        shuffle.lanes.push_back(pick == idle ? lane : pick % lanes);
        if (pick == idle)
            continue;
        int &source = operand[lane / (lanes / 2)];
        if (source != -1 && source != pick / lanes)
            return {};
        source = pick / lanes;
    }
    const int any = operand[0] == -1 ? operand[1] : operand[0];
    shuffle.first = operand[0] == -1 ? any : operand[0];
    shuffle.second = operand[1] == -1 ? any : operand[1];
    return shuffle;
}

} // namespace

Node inRegisters(const Graph &graph, const Node &gather) {
    const int lanes = 16 / bytes(gather.type.element);
    Node whole = gather;
    whole.type.lanes = lanes;
    whole.picks.assign(lanes, idle);
    for (int lane = 0; lane < gather.type.lanes; ++lane) {
        if (gather.picks[lane] == idle)
            continue;
        const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
        whole.picks[lane] = place.operand * lanes + place.lane;
    }
    return whole;
}

std::optional<Shuffle> singleShuffle(const Node &gather) {
    if (auto shuffle = asUnpack(gather, Shuffle::Kind::UnpackLow))
        return shuffle;
    if (auto shuffle = asUnpack(gather, Shuffle::Kind::UnpackHigh))
        return shuffle;
    return asSelect(gather);
}

} // namespace zrfgen::gen
