// Walks through graphs without recursion: however long a chain a schema makes, the stack holds.
#pragma once

#include <set>
#include <utility>
#include <vector>

namespace tlvc {

// Calls `leave` for all that can be reached from the node and has not been visited, each behind what `successors` says
// it leads to, as a vector of nodes. In a circle something comes before what it leads to.
template <typename Node, typename Successors, typename Leave>
void walk_depth_first(const Node &root, std::set<Node> &visited, Successors successors, Leave leave) {
    struct Step {
        Node node;
        std::vector<Node> next;
        size_t taken = 0;
    };
    std::vector<Step> path;
    const auto enter = [&](const Node &node) {
        if (visited.insert(node).second) {
            path.push_back({node, successors(node)});
        }
    };
    enter(root);
    while (!path.empty()) {
        Step &last = path.back();
        if (last.taken < last.next.size()) {
            enter(Node(last.next[last.taken++]));
        } else {
            leave(last.node);
            path.pop_back();
        }
    }
}

} // namespace tlvc
