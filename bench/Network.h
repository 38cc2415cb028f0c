#pragma once

#include <map>
#include <string>

namespace bench {

// Lists of 1,000 and 50,000 orders on PostgreSQL across a network of 1.3 ms
// round trips (a proxy adding 0.65 ms each way): ZTkDb against libpq running
// the same statement prepared once, the floor. `pgAdmin` as bench/run sets
// ZTKDB_BENCH_PG.
void RegisterNetwork(const std::string& pgAdmin);

// Thirty-two desktop clients at once on the data set of `orders` behind
// `connect`, directly and through pgbouncer in transaction mode (bench/run
// starts it one port above the cluster): a help desk's mix of 60 % reads by
// id, 20 % one-row lists, 10 % creates and 10 % guarded updates.
void RegisterClients(const std::string& connect, int32_t orders);

// The network lines of the summary; false when a target was missed.
bool NetworkSummary(const std::map<std::string, double>& results);

}  // namespace bench
