// The one test that runs clients in several threads; it is also the one
// the ThreadSanitizer build compiles, so it keeps to the engine helpers.
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CTkDb.h"

using namespace ZTkDb;

// Clients in different threads at the same time, each with its own database:
// opens, creates, lists and closes interleave freely and nothing of one
// client reaches another.
class Threads : public ::testing::TestWithParam<ztktest::Engine> {};

INSTANTIATE_TEST_SUITE_P(Engines, Threads, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(Threads, ClientsInDifferentThreadsWorkSideBySide) {
  constexpr int kThreads = 4;
  constexpr int kSessions = 8;
  constexpr int kOrders = 5;
  std::vector<std::unique_ptr<ztktest::EngineDb>> dbs;
  for (int t = 0; t < kThreads; ++t) {
    dbs.push_back(std::make_unique<ztktest::EngineDb>(GetParam()));
    CTkDb probe;
    ZTKTEST_OPEN_ENGINE(*dbs.back(), probe, "probe" + std::to_string(t));
  }
  std::vector<std::string> failures(kThreads);
  std::vector<std::vector<std::string>> uids(kThreads);
  // Each session ends with an update conflict; its box reaches whichever of
  // two sinks the host has just set.
  std::atomic<int> boxes{0};
  std::atomic<bool> done{false};
  std::thread host([&] {
    while (!done) {
      SetMessageSink([&boxes](const MessageBoxCall& box) {
        if (box.text == "CAuftrag.Update fehlgeschlagen. Bitte an TORQ melden!") ++boxes;
      });
      std::this_thread::yield();
    }
  });
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const std::string client = "thread" + std::to_string(t);
      try {
        for (int s = 0; s < kSessions; ++s) {
          CTkDb tkdb;  // a session per round: opens and closes interleave
          dbs[static_cast<size_t>(t)]->OpenAgain(tkdb, client);
          if (tkdb.DbPath().empty()) throw std::runtime_error("not open");
          for (int i = 0; i < kOrders; ++i) {
            // The thread's number in every order, so a row in the wrong
            // database shows.
            auto order = ztktest::CreateOrder(client, {.nr = t * 1000 + s * kOrders + i});
            uids[static_cast<size_t>(t)].push_back(order->UId());
          }
          CAuftragListe list;
          list.ConnectStorage(client);
          list.ReadAll();
          if (list.Count() != (s + 1) * kOrders)
            throw std::runtime_error("count " + std::to_string(list.Count()) + " in session " +
                                     std::to_string(s));
          for (auto o = list.MoveFirst(); o; o = list.MoveNext()) {
            if (o->Nr() / 1000 != t) throw std::runtime_error("another thread's row");
          }
          auto first = list.MoveFirst();
          auto second = list.MoveFirst();
          first->Update();
          second->Update();
        }
      } catch (const Error& e) {
        failures[static_cast<size_t>(t)] = std::to_string(e.Number()) + " " + e.Description();
      } catch (const std::exception& e) {
        failures[static_cast<size_t>(t)] = e.what();
      }
    });
  }
  for (auto& th : threads) th.join();
  done = true;
  host.join();
  SetMessageSink(nullptr);
  EXPECT_EQ(boxes, kThreads * kSessions);
  std::set<std::string> distinct;
  for (int t = 0; t < kThreads; ++t) {
    EXPECT_EQ(failures[static_cast<size_t>(t)], "") << "thread " << t;
    distinct.insert(uids[static_cast<size_t>(t)].begin(), uids[static_cast<size_t>(t)].end());
  }
  EXPECT_EQ(distinct.size(), static_cast<size_t>(kThreads * kSessions * kOrders));
}
