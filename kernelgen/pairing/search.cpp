#include "pairing/search.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace zrfgen::gen {

namespace {

constexpr int mostSteps = 4000, stepsForOperation = 40;
// In halves of an operation.
constexpr double firstTemperature = 4, lastTemperature = 0.08;

class Search {
public:
    Search(Pairing &pairing, int seed) : pairing(pairing), random(seed), touchedIn(pairing.nodes()) {}

    void step(double temperature) {
        const auto &operations = pairing.operations();
        const NodeId node = operations[below(operations.size())];
        if (pairing.alike(node).empty())
            return;
        const int before = pairing.cost();
        const std::size_t start = pairing.mark();
        if (below(8) == 0) {
            pairing.part(node);
        } else {
            const auto [a, b] = proposal(node);
            if (a == b || !pairing.areAlike(a, b))
                return;
            if (below(2) == 0)
                tryJoin(a, b);
            else
                grow(a, b);
        }
        const int change = pairing.cost() - before;
        if (change > 0 && uniform() >= std::exp(-change / temperature))
            pairing.goBack(start);
        pairing.forget();
    }

private:
    std::size_t below(std::size_t bound) { return random() % bound; }
    double uniform() { return random() / 4294967296.0; }

    // Two to put side by side: any two, a pair the other way round, or what a pair needs.
    std::pair<NodeId, NodeId> proposal(NodeId node) {
        const NodeId mate = pairing.mate(node);
        const std::size_t kind = mate == noNode ? 0 : below(8);
        const NodeId a = pairing.isLower(node) ? node : mate;
        if (kind == 1)
            return {pairing.mate(a), a};
        if (kind >= 2 && kind <= 4)
            return pairing.operands(a, pairing.mate(a), static_cast<int>(below(pairing.slots(a))),
                                    pairing.isExchanged(a));
        const auto &alike = pairing.alike(node);
        return {node, alike[below(alike.size())]};
    }

    // Goes from pair to pair by operands, by users or by both, and then back to where it was cheapest.
    void grow(NodeId a, NodeId b) {
        const std::size_t ways = 1 + below(3);
        ++growth;
        frontier.clear();
        leastCost = std::numeric_limits<int>::max();
        visit(a, b);
        for (std::size_t i = 0; i < frontier.size(); ++i) {
            const auto [x, y] = frontier[i];
            if ((ways & 1) != 0)
                visitOperands(x, y);
            if ((ways & 2) != 0)
                visitUsers(x, y);
        }
        if (leastCost < std::numeric_limits<int>::max())
            pairing.goBack(cheapest);
    }

    void visitOperands(NodeId x, NodeId y) {
        for (int slot = 0; slot < pairing.slots(x); ++slot) {
            const auto [p, q] = pairing.operands(x, y, slot, pairing.isExchanged(x));
            if (pairing.areAlike(p, q))
                visit(p, q);
        }
    }

    // Each user of x with the user of y whose other operands suit its own best.
    void visitUsers(NodeId x, NodeId y) {
        for (const NodeId user : pairing.users(x)) {
            NodeId best = noNode;
            int bestScore = -1;
            for (const NodeId other : pairing.users(y)) {
                if (user == other || touchedIn[other] == growth || !pairing.areAlike(user, other))
                    continue;
                int score = 0;
                for (int slot = 0; slot < pairing.slots(user); ++slot) {
                    const auto [p, q] = pairing.operands(user, other, slot, false);
                    const bool isPair = pairing.mate(p) == q || (p == x && q == y);
                    score += isPair ? 2 : pairing.areAlike(p, q) ? 1 : 0;
                }
                if (score > bestScore) {
                    best = other;
                    bestScore = score;
                }
            }
            if (best != noNode)
                visit(user, best);
        }
    }

    void visit(NodeId a, NodeId b) {
        if (a == b || touchedIn[a] == growth || touchedIn[b] == growth)
            return;
        const bool isThere = pairing.mate(a) == b && pairing.isLower(a);
        if (!isThere && !tryJoin(a, b))
            return;
        touchedIn[a] = touchedIn[b] = growth;
        frontier.push_back({a, b});
        if (!isThere && pairing.cost() < leastCost) {
            leastCost = pairing.cost();
            cheapest = pairing.mark();
        }
    }

    bool tryJoin(NodeId a, NodeId b) {
        const std::size_t mark = pairing.mark();
        if (pairing.join(a, b))
            return true;
        pairing.goBack(mark);
        return false;
    }

    Pairing &pairing;
    std::mt19937 random;
    std::vector<int> touchedIn; // the growth that met each node last
    int growth = 0, leastCost = 0;
    std::size_t cheapest = 0;
    std::vector<std::pair<NodeId, NodeId>> frontier;
};

} // namespace

void search(Pairing &pairing, int seed) {
    Search search(pairing, seed);
    const int steps = std::min(mostSteps, stepsForOperation * static_cast<int>(pairing.operations().size()));
    for (int step = 0; step < steps; ++step)
        search.step(firstTemperature *
                    std::pow(lastTemperature / firstTemperature, static_cast<double>(step) / steps));
}

} // namespace zrfgen::gen
