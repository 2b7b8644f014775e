// A queue with many senders and one receiver. Its nodes come from a pool and return to it: while the pool has free
// nodes, neither senders nor the receiver lock or allocate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/RealTime.h"
#include "core/TaggedHead.h"

namespace tesh::cofu::core::impl {

/// A node of the pool. A sender is its only owner from `take` until it is posted.
template <typename T>
struct alignas(kTaggedAlignment) MailNode {
  std::atomic<MailNode*> next{nullptr};  ///< Atomic: a sender that loses the race for the node still reads it.
  std::optional<T> payload;
};

/// The pool of nodes. It owns all of them, and destroys mail that was posted but never received.
template <typename T>
class MailServer {
 public:
  using Node = MailNode<T>;

  /// Makes `capacity` nodes, all free.
  explicit MailServer(std::size_t capacity) {
    nodes.reserve(capacity);
    for (std::size_t i = 0; i < capacity; ++i) {
      Node& node = makeNode();
      freeList.push(node, node);
    }
  }

  /// Removes a node from the pool and clears its `next`. An empty pool grows by one node, under a lock. Any thread;
  /// audio thread safe while the pool has free nodes.
  Node& take() {
    if (Node* const node = freeList.pop()) {
      node->next.store(nullptr, std::memory_order_relaxed);
      return *node;
    }
    // More mail waits than ever before: this sender allocates a node, under a lock.
    return cofu::core::mayWait([this]() -> Node& {
      const std::lock_guard lock(mutex);
      return makeNode();
    });
  }

  /// Returns the chain from `first` to `last` to the pool in one step. Any thread; audio thread safe.
  void giveBack(Node& first, Node& last) { freeList.push(first, last); }

  /// The number of nodes, in the pool or in use. Any thread.
  std::size_t nodeCount() const {
    const std::lock_guard lock(mutex);
    return nodes.size();
  }

 private:
  Node& makeNode() {
    nodes.push_back(std::make_unique<Node>());
    return *nodes.back();
  }

  mutable std::mutex mutex;  ///< Guards `nodes` while the pool grows.
  std::vector<std::unique_ptr<Node>> nodes;
  TaggedHead<Node> freeList;
};

/// The queue of one receiver, first in, first out. Many queues may share a pool.
template <typename T>
class Mailbox {
 public:
  static_assert(std::is_nothrow_move_constructible_v<T>, "receive() must not lose what it takes");

  explicit Mailbox(std::shared_ptr<MailServer<T>> mailServer) : server(std::move(mailServer)) {}

  /// Any thread; audio thread safe for a T that copies without allocating, while the pool has free nodes.
  void post(const T& value) {
    Node& node = fill(value);
    deliver(node, node);
  }

  /// Posts copies of `first` to `last` in one step: no other mail comes between them. Any thread.
  template <typename Iterator>
  void postAll(Iterator first, Iterator last) {
    Chain chain(*server);
    for (; first != last; ++first) {
      chain.prepend(fill(*first));
    }
    if (chain.newest != nullptr) {
      deliver(*std::exchange(chain.newest, nullptr), *chain.oldest);
    }
  }

  /// The oldest mail, or nothing. The receiver only; audio thread safe.
  std::optional<T> receive() {
    if (cursor == nullptr && !fetchBatch()) {
      return std::nullopt;
    }
    std::optional<T> mail(std::move(cursor->payload));
    cursor->payload.reset();
    cursor = cursor->next.load(std::memory_order_relaxed);
    if (cursor == nullptr) {
      server->giveBack(*batchHead, *batchTail);
    }
    return mail;
  }

  /// The receiver only; audio thread safe.
  bool isEmpty() const { return cursor == nullptr && inbox.load() == nullptr; }

 private:
  using Node = MailNode<T>;

  /// Filled nodes, linked from the newest to the oldest. Those that are not posted return to the pool.
  struct Chain {
    explicit Chain(MailServer<T>& mailServer) : pool(mailServer) {}
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;
    ~Chain() {
      for (Node* node = newest; node != nullptr; node = node->next.load(std::memory_order_relaxed)) {
        node->payload.reset();
      }
      if (newest != nullptr) {
        pool.giveBack(*newest, *oldest);
      }
    }

    void prepend(Node& node) {
      node.next.store(newest, std::memory_order_relaxed);
      oldest = newest == nullptr ? &node : oldest;
      newest = &node;
    }

    MailServer<T>& pool;
    Node* newest = nullptr;
    Node* oldest = nullptr;
  };

  /// A node with a copy of `value`. If copying throws, the node returns to the pool.
  Node& fill(const T& value) {
    Node& node = server->take();
    if constexpr (std::is_nothrow_copy_constructible_v<T>) {
      node.payload.emplace(value);
    } else {
      try {
        node.payload.emplace(value);
      } catch (...) {
        server->giveBack(node, node);
        throw;
      }
    }
    return node;
  }

  /// Links a chain in front of the inbox.
  void deliver(Node& newest, Node& oldest) {
    Node* head = inbox.load();
    do {
      oldest.next.store(head, std::memory_order_relaxed);
    } while (!inbox.compare_exchange_weak(head, &newest));
  }

  /// Takes all mail that has been posted and reverses it, so that the oldest comes first. False if there is none.
  bool fetchBatch() {
    Node* node = inbox.load();
    while (node != nullptr && !inbox.compare_exchange_weak(node, nullptr)) {
    }
    if (node == nullptr) {
      return false;
    }
    batchTail = node;
    Node* reversed = nullptr;
    while (node != nullptr) {
      Node* const next = node->next.load(std::memory_order_relaxed);
      node->next.store(reversed, std::memory_order_relaxed);
      reversed = std::exchange(node, next);
    }
    batchHead = reversed;
    cursor = reversed;
    return true;
  }

  std::shared_ptr<MailServer<T>> server;
  Node* batchHead = nullptr;
  Node* batchTail = nullptr;
  Node* cursor = nullptr;
  std::atomic<Node*> inbox{nullptr};
};

}  // namespace tesh::cofu::core::impl
