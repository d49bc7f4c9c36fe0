#include "dbaccess/mariadb/MariaDbError.h"

#include <gtest/gtest.h>

#include <utility>

namespace dbaccess::mariadb {
namespace {

TEST(MariaDbError, WhatNumbersProve) {
    const std::pair<int, Fate> cases[] = {
        {2006, Fate::NotExecuted}, {1047, Fate::NotExecuted}, {1213, Fate::RolledBack},
        {2013, Fate::InDoubt},     {1180, Fate::InDoubt},     {1062, Fate::Refused},
        {1020, Fate::RolledBack},  {4031, Fate::NotExecuted}, {5003, Fate::Refused},
    };
    for (const auto& [number, fate] : cases)
        EXPECT_EQ(fate, fateOf(number)) << number;
}

}  // namespace
}  // namespace dbaccess::mariadb
