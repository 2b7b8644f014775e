// The head of a lock-free stack that many threads push to and pop from. A tag beside the pointer changes with every
// swing, so that a node that left and came back meanwhile is not mistaken for one that stayed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tesh::cofu::core::impl {

/// What a node is aligned to at least: its address leaves the low four bits to the tag.
inline constexpr std::size_t kTaggedAlignment = 16;

/// A stack of nodes that are linked by an atomic `next`. The owner of the nodes keeps them alive as long as the stack:
/// a late reader may still look at a node that another thread has popped.
template <typename Node>
class TaggedHead {
 public:
  /// Puts a chain of nodes, linked from `first` to `last`, on top in one step.
  void push(Node& first, Node& last) {
    std::uint64_t head = word.load();
    do {
      last.next.store(nodeOf(head), std::memory_order_relaxed);
    } while (!word.compare_exchange_weak(head, pack(&first, head)));
  }

  /// Takes the top node, or gives null when there is none.
  Node* pop() {
    std::uint64_t head = word.load();
    while (Node* const node = nodeOf(head)) {
      if (word.compare_exchange_weak(head, pack(node->next.load(std::memory_order_relaxed), head))) {
        return node;
      }
    }
    return nullptr;
  }

 private:
  static_assert(sizeof(void*) == sizeof(std::uint64_t));

  // Addresses of a process lie below 2^48. Four bits are spare below and sixteen above: a tag of twenty bits.
  static constexpr int kAddressBits = 48;
  static constexpr std::uint64_t kAddressMask = ((std::uint64_t{1} << kAddressBits) - 1) & ~(kTaggedAlignment - 1);
  static constexpr std::uint64_t kTagMask = ~kAddressMask;

  static Node* nodeOf(std::uint64_t head) {
    return reinterpret_cast<Node*>(head & kAddressMask);  // NOLINT(performance-no-int-to-ptr): that is the packing.
  }

  /// `node` with the tag that follows the one of `head`. The carry runs over the bits of the address.
  static std::uint64_t pack(Node* node, std::uint64_t head) {
    const std::uint64_t nextTag = ((head | kAddressMask) + 1) & kTagMask;
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    return (address & kAddressMask) | nextTag;
  }

  std::atomic<std::uint64_t> word{0};
};

}  // namespace tesh::cofu::core::impl
