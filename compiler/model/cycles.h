#pragma once

#include "compiler/text/source.h"

#include <algorithm>
#include <map>
#include <vector>

namespace tlvc {

template <typename Node>
struct Edge {
    Node from;
    Node to;
    Span span; // where the one names the other
};

// The circles that a depth-first walk along the edges meets, each as the edges that lead around it. Every graph with
// a circle gives at least one, and the order of edges decides which. Of several edges between the same two nodes the
// first counts.
template <typename Node>
class CycleFinder {
public:
    using Cycle = std::vector<Edge<Node>>;

    explicit CycleFinder(const std::vector<Edge<Node>> &edges) {
        for (const Edge<Node> &edge : edges) {
            std::vector<Edge<Node>> &known = outgoing_[edge.from];
            bool again = std::any_of(known.begin(), known.end(),
                                     [&](const Edge<Node> &other) { return other.to == edge.to; });
            if (!again) {
                known.push_back(edge);
            }
        }
        for (const Edge<Node> &edge : edges) {
            visit(edge.from);
        }
    }

    std::vector<Cycle> cycles;

private:
    enum class State { Open, Done };

    void visit(const Node &node) {
        const auto [state, is_new] = states_.try_emplace(node, State::Open);
        if (is_new) {
            for (const Edge<Node> &edge : outgoing_[node]) {
                path_.push_back(edge);
                visit(edge.to);
                path_.pop_back();
            }
            state->second = State::Done;
        } else if (state->second == State::Open) {
            const auto first = std::find_if(path_.begin(), path_.end(),
                                            [&](const Edge<Node> &edge) { return edge.from == node; });
            cycles.emplace_back(first, path_.end());
        }
    }

    std::map<Node, std::vector<Edge<Node>>> outgoing_;
    std::map<Node, State> states_;
    Cycle path_;
};

template <typename Node>
std::vector<std::vector<Edge<Node>>> find_cycles(const std::vector<Edge<Node>> &edges) {
    return CycleFinder<Node>(edges).cycles;
}

} // namespace tlvc
