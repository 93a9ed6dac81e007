#pragma once

#include "compiler/text/source.h"

#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace tlvc {

template <typename Node>
struct Edge {
    Node from;
    Node to;
    Span span; // where the one names the other
};

// The circles that a depth-first walk along the edges meets, each as the edges that lead around it. Every graph with
// a circle gives at least one, and the order of edges decides which. The first edge counts where several lead between
// the same two nodes. Circles share their edges, so that all of a large graph would take its square: there are none
// beyond some thousand edges.
template <typename Node>
class CycleFinder {
public:
    using Cycle = std::vector<Edge<Node>>;

    explicit CycleFinder(const std::vector<Edge<Node>> &edges) {
        std::set<std::pair<Node, Node>> known;
        for (const Edge<Node> &edge : edges) {
            if (known.emplace(edge.from, edge.to).second) {
                outgoing_[edge.from].push_back(edge);
            }
        }
        for (const Edge<Node> &edge : edges) {
            walk(edge.from);
        }
    }

    std::vector<Cycle> cycles;

private:
    static constexpr size_t enough = 10'000; // edges in circles

    struct Step {
        Node node;
        size_t taken = 0; // edges that the walk went along, the last of them to the next step
    };

    // The walk needs no recursion: schemas chain as many types and files as they like.
    void walk(const Node &root) {
        enter(root);
        while (!path_.empty()) {
            Step &last = path_.back();
            const std::vector<Edge<Node>> &edges = outgoing_[last.node];
            if (last.taken == edges.size()) {
                open_[last.node] = done;
                path_.pop_back();
            } else {
                const Edge<Node> &edge = edges[last.taken++];
                enter(edge.to);
            }
        }
    }

    void enter(const Node &node) {
        const auto [known, is_new] = open_.try_emplace(node, path_.size());
        if (is_new) {
            path_.push_back({node});
        } else if (known->second != done) {
            add_circle(known->second);
        }
    }

    // Adds the circle that leads from that step of the path back to it.
    void add_circle(size_t first) {
        if (reported_edges_ >= enough) {
            return;
        }
        Cycle &cycle = cycles.emplace_back();
        for (size_t i = first; i < path_.size(); ++i) {
            cycle.push_back(outgoing_[path_[i].node][path_[i].taken - 1]);
        }
        reported_edges_ += cycle.size();
    }

    static constexpr size_t done = SIZE_MAX;

    std::map<Node, std::vector<Edge<Node>>> outgoing_;
    std::map<Node, size_t> open_; // where on the path a node is, or that it is done
    std::vector<Step> path_;
    size_t reported_edges_ = 0;
};

template <typename Node>
std::vector<std::vector<Edge<Node>>> find_cycles(const std::vector<Edge<Node>> &edges) {
    return CycleFinder<Node>(edges).cycles;
}

} // namespace tlvc
