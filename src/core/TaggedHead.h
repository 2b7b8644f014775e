// The head of a lock-free stack that many threads push to and pop from. It packs a pointer with a tag that changes with
// every exchange, so that a thread notices if its node was popped and pushed again in the meantime (the ABA problem).
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tesh::cofu::core::impl {

/// The least alignment of a node in bytes. The low four bits of its address are then 0 and free for the tag.
inline constexpr std::size_t kTaggedAlignment = 16;

/// A stack of nodes that are linked by an atomic `next`. The nodes must live as long as the stack, because a thread may
/// still read a node that another thread has popped. Any thread.
template <typename Node>
class TaggedHead {
 public:
  /// Pushes a chain of nodes, linked from `first` to `last`, in one step.
  void push(Node& first, Node& last) {
    std::uint64_t head = word.load();
    do {
      last.next.store(nodeOf(head), std::memory_order_relaxed);
    } while (!word.compare_exchange_weak(head, pack(&first, head)));
  }

  /// Pops the top node; null if the stack is empty.
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

  // Addresses of a process lie below 2^48, so that sixteen bits above and four bits below are free: a tag of twenty
  // bits.
  static constexpr int kAddressBits = 48;
  static constexpr std::uint64_t kAddressMask = ((std::uint64_t{1} << kAddressBits) - 1) & ~(kTaggedAlignment - 1);
  static constexpr std::uint64_t kTagMask = ~kAddressMask;

  static Node* nodeOf(std::uint64_t head) {
    return reinterpret_cast<Node*>(head & kAddressMask);  // NOLINT(performance-no-int-to-ptr): that is the packing.
  }

  /// Packs `node` with the tag after that of `head`. All address bits are set before 1 is added, so that the carry
  /// passes from the tag's low bits to its high ones.
  static std::uint64_t pack(Node* node, std::uint64_t head) {
    const std::uint64_t nextTag = ((head | kAddressMask) + 1) & kTagMask;
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    return (address & kAddressMask) | nextTag;
  }

  std::atomic<std::uint64_t> word{0};
};

}  // namespace tesh::cofu::core::impl
