// Mail: order, the pool of nodes, and concurrent senders.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MailServer.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <thread>

namespace tesh::cofu::core::impl {
namespace {

TEST(Mail, ComesInTheOrderOfPosting) {
  Mailbox<int> mail(std::make_shared<MailServer<int>>(4));
  EXPECT_TRUE(mail.isEmpty());
  EXPECT_EQ(mail.receive(), std::nullopt);
  mail.post(1);
  mail.post(2);
  EXPECT_FALSE(mail.isEmpty());
  EXPECT_EQ(mail.receive(), 1);
  mail.post(3);
  const std::array<int, 3> more{4, 5, 6};
  mail.postAll(more.begin(), more.end());
  mail.postAll(more.end(), more.end());
  for (int expected = 2; expected <= 6; ++expected) {
    EXPECT_EQ(mail.receive(), expected);
  }
  EXPECT_TRUE(mail.isEmpty());
}

TEST(Mail, GrowsThePoolOnlyWhenAllOfItIsInFlight) {
  const auto server = std::make_shared<MailServer<int>>(256);
  Mailbox<int> mail(server);
  for (int i = 0; i < 300; ++i) {
    mail.post(i);
  }
  EXPECT_EQ(server->nodeCount(), 300U);
  for (int i = 0; i < 299; ++i) {
    mail.receive();
  }
  mail.post(300);  // The batch is not finished, so none of its nodes is free yet.
  EXPECT_EQ(server->nodeCount(), 301U);
  mail.receive();
  mail.receive();
  for (int i = 0; i < 301; ++i) {
    mail.post(i);
  }
  EXPECT_EQ(server->nodeCount(), 301U);

  Mailbox<int> unpooled(std::make_shared<MailServer<int>>(0));
  unpooled.post(7);
  EXPECT_EQ(unpooled.receive(), 7);
}

/// Counts its copies, and throws at a chosen one.
struct Parcel {
  Parcel(std::shared_ptr<int> counted, bool isBad = false) : content(std::move(counted)), refuses(isBad) {}
  Parcel(const Parcel& other) : content(other.content), refuses(other.refuses) {
    if (refuses) {
      throw std::runtime_error("refused");
    }
  }
  Parcel(Parcel&&) noexcept = default;

  std::shared_ptr<int> content;
  bool refuses = false;
};

TEST(Mail, KeepsNothingOfWhatWasTakenOrCouldNotBePosted) {
  const auto content = std::make_shared<int>(5);
  auto server = std::make_shared<MailServer<Parcel>>(3);
  {
    Mailbox<Parcel> mail(server);
    mail.post(Parcel(content));
    EXPECT_EQ(content.use_count(), 2);
    mail.receive();
    EXPECT_EQ(content.use_count(), 1);

    std::vector<Parcel> batch;
    batch.reserve(3);
    batch.emplace_back(content);
    batch.emplace_back(content);
    batch.emplace_back(content, true);
    EXPECT_THROW(mail.postAll(batch.begin(), batch.end()), std::runtime_error);
    EXPECT_THROW(mail.post(batch.back()), std::runtime_error);
    EXPECT_TRUE(mail.isEmpty());
    batch.pop_back();
    mail.postAll(batch.begin(), batch.end());
    EXPECT_EQ(server->nodeCount(), 3U);
  }
  EXPECT_EQ(content.use_count(), 3);  // Still held by the pool: posted but never received.
  server.reset();
  EXPECT_EQ(content.use_count(), 1);
}

TEST(Mail, ReachesItsReceiverFromManySendersWhole) {
  constexpr std::uint32_t kSenders = 4;
  constexpr std::uint32_t kLetters = 20000;
  struct Letter {
    std::uint32_t sender;
    std::uint32_t number;
    std::uint32_t check;
  };
  // A small pool, so that senders exchange nodes all the time.
  Mailbox<Letter> mail(std::make_shared<MailServer<Letter>>(8));
  std::vector<std::thread> senders;
  for (std::uint32_t sender = 0; sender < kSenders; ++sender) {
    senders.emplace_back([&mail, sender] {
      for (std::uint32_t number = 0; number < kLetters; number += 2) {
        const std::array<Letter, 2> pair{
            {{sender, number, sender ^ ~number}, {sender, number + 1, sender ^ ~(number + 1)}}};
        if (number % 4 == 0) {
          mail.postAll(pair.begin(), pair.end());
        } else {
          mail.post(pair[0]);
          mail.post(pair[1]);
        }
      }
    });
  }
  std::array<std::uint32_t, kSenders> next{};
  bool isWhole = true;
  for (std::uint32_t received = 0; received < kSenders * kLetters && isWhole;) {
    if (const auto letter = mail.receive()) {
      isWhole = letter->sender < kSenders && letter->number == next[letter->sender]++ &&
                letter->check == (letter->sender ^ ~letter->number);
      ++received;
    } else {
      std::this_thread::yield();
    }
  }
  for (std::thread& sender : senders) {
    sender.join();
  }
  EXPECT_TRUE(isWhole);
  EXPECT_TRUE(mail.isEmpty());
}

}  // namespace
}  // namespace tesh::cofu::core::impl
