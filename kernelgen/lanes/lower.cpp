#include "lanes/lower.h"

namespace zrfgen::gen {

Graph lowered(const Graph &graph, const Target &target) {
    const InstructionSet &instructions = target.instructions();
    return rewritten(
        graph,
        [&](Graph &copy, Node node) {
            if (node.type.lanes > 1 && node.op == Op::Gather)
                return instructions.loweredGather(copy, node);
            if (node.type.lanes > 1 && node.op == Op::Load)
                return instructions.loweredLoad(copy, node);
            return copy.intern(std::move(node));
        },
        [&](Graph &copy, const Store &store) {
            if (store.offsets.size() > 1)
                instructions.lowerStore(copy, store);
            else
                copy.store(store.value, store.offsets);
        });
}

} // namespace zrfgen::gen
