#pragma once

#include "source.h"

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

// The circles that a depth-first walk meets, each as the edges that lead around it. Every graph with a circle
// gives at least one, and the order of nodes and edges decides which. Of several edges between the same two
// nodes the first counts.
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
    }

    std::vector<Cycle> find(const std::vector<Node> &nodes) {
        for (const Node &node : nodes) {
            if (!states_.contains(node)) {
                visit(node);
            }
        }
        return std::move(cycles_);
    }

private:
    enum class State { Open, Done };

    void visit(const Node &node) {
        states_[node] = State::Open;
        for (const Edge<Node> &edge : outgoing_[node]) {
            auto seen = states_.find(edge.to);
            if (seen != states_.end() && seen->second == State::Done) {
                continue;
            }
            path_.push_back(edge);
            if (seen == states_.end()) {
                visit(edge.to);
            } else {
                close(edge.to);
            }
            path_.pop_back();
        }
        states_[node] = State::Done;
    }

    void close(const Node &node) {
        auto first = std::find_if(path_.begin(), path_.end(),
                                  [&](const Edge<Node> &edge) { return edge.from == node; });
        cycles_.push_back(Cycle(first, path_.end()));
    }

    std::map<Node, std::vector<Edge<Node>>> outgoing_;
    std::map<Node, State> states_;
    Cycle path_;
    std::vector<Cycle> cycles_;
};

template <typename Node>
std::vector<std::vector<Edge<Node>>> find_cycles(const std::vector<Node> &nodes,
                                                 const std::vector<Edge<Node>> &edges) {
    return CycleFinder<Node>(edges).find(nodes);
}

} // namespace tlvc
