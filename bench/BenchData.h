#pragma once

#include <cstdint>
#include <string>

namespace bench {

// A module database file with `orders` orders and, in proportion, half as
// many reports, a link for four orders in five, one labour booking per
// order and one material booking for every second. Three orders in ten are
// open (ErledigtDatum 31.12.9999), the rest done within the last 120 days;
// order dates spread over the last year. Built once per size with raw
// sqlite3 and kept in `dir`; returns its path.
std::string SqliteDataSet(const std::string& dir, int32_t orders);

// A copy of the data set that benchmarks may write to.
std::string WritableCopy(const std::string& source, const std::string& name);

// The same data set on PostgreSQL, in database `name` of the cluster the
// connection string `admin` reaches (its database "postgres"), built with
// set-based SQL. Returns the connection string of the new database, or ""
// when no server answers.
std::string PostgresDataSet(const std::string& adminConnect, const std::string& name,
                            int32_t orders);

}  // namespace bench
