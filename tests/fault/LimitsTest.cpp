// What a call, a result, a pool and a process may not go beyond.
#include <sys/wait.h>
#include <unistd.h>

#include "tests/fault/FaultTest.h"

namespace dbaccess {
namespace {

using LimitsTest = FaultTest;

Outcome run(StatementRunner& runner, const std::string& text) {
    return runner.run(kDatabase, Statement(text));
}

TEST_F(LimitsTest, APoolKeepsItsMinimumAndNoMore) {
    PoolSettings settings;
    settings.minConnections = 2;
    settings.idle = milliseconds(100);
    StatementRunner runner(connector());
    Error error;
    ASSERT_TRUE(runner.open(settings, error));
    inThreads(6, [&](int) { run(runner, "select sleep(0.3)"); });
    EXPECT_EQ("6", openSessions());
    EXPECT_TRUE(becomes([&] { return openSessions() == "2"; }));
    admin("kill user " + server().user());  // this one too
    EXPECT_EQ("0", openSessions());
    EXPECT_TRUE(becomes([&] { return openSessions() == "2"; }));

    settings.age = milliseconds(50);
    settings.idle = seconds(60);
    StatementRunner aging(connector());
    ASSERT_TRUE(aging.open(settings, error));
    const auto session = [&] { return firstValue(run(aging, "select connection_id() as v")); };
    const std::string first = session();
    std::this_thread::sleep_for(milliseconds(60));
    session();  // is given back too old
    EXPECT_NE(first, session());
}

TEST_F(LimitsTest, AServerThatTakesFewerConnectionsThanThePool) {
    admin("create or replace user few identified by 'right' with max_user_connections 3");
    admin("grant all on *.* to few");
    DataAccess access(server().host(), server().port(), "few", "right");
    EXPECT_TRUE(access.Initialize(2, 8, true, true));
    writeInThreads(access, kDatabase, 8, 40);
    EXPECT_EQ("320", ask("select count(*) as v from t"));
}

TEST_F(LimitsTest, AnInsertWhoseNumberCouldNotBeReadFails) {
    admin("alter table t add primary key(n)");
    admin("insert into t(n) values(7)");
    const auto access = newAccess();
    ASSERT_TRUE(access->Initialize(1, 1, true, false));
    std::thread holder([&] { query(*access, "select sleep(0.5) as v"); });
    sleeper();
    EXPECT_EQ("-1040", query(*access, "select max(n) as v from t"));
    holder.join();
    EXPECT_EQ(-1040, access->Execute(kDatabase, "insert into t(n) values(1)"));
    EXPECT_EQ("7", query(*access, "select max(n) as v from t"));
    EXPECT_EQ(1, access->Execute(kDatabase, "insert into t(n) values(8)"));
}

TEST_F(LimitsTest, WhatMayHaveRunDoesNotRunAgain) {
    admin("create or replace sequence numbers nocache");
    admin("create or replace table first_come(k INT) ENGINE=InnoDB");
    admin(
        "create or replace procedure p() begin insert into first_come values(1); commit; "
        "signal sqlstate '40001' set mysql_errno=1213; end");
    const auto access = connected(2);
    std::thread killer([&] { admin("kill " + sleeper()); });
    EXPECT_EQ("-2013", query(*access, "select nextval(numbers) as v, sleep(1)"));
    killer.join();
    EXPECT_EQ(1U, std::stoul(ask("select nextval(numbers)-1 as v")));
    EXPECT_EQ(-1213, access->Execute(kDatabase, "call p()"));
    EXPECT_EQ("1", ask("select count(*) as v from first_come"));
}

TEST_F(LimitsTest, ResultsHaveAnEnd) {
    Settings settings = shortLimits();
    settings.largestResult = 1 << 20;
    const auto limited = [&](const Settings& limits) {
        const HostText text = parseHost(server().host(), server().port());
        return std::make_unique<StatementRunner>(
            mariadb::makeConnector(text.servers, server().user(), server().password(), limits),
            kShort.call);
    };
    const auto small = limited(settings);
    // Twice as text and twice prepared.
    for (int i = 0; i < 4; ++i) {
        const auto begin = Clock::now();
        EXPECT_THROW(run(*small, "select repeat('x',9000) as v from seq_1_to_1000000 where seq>0"),
                     ResultTooLarge);
        EXPECT_LT(Clock::now() - begin, seconds(1));
        EXPECT_EQ("x", firstValue(run(*small, "select 'x' as v")));
    }
    // Rows that come one by one, each in time, for longer than a call may take.
    const auto slow = limited(shortLimits());
    const auto begin = Clock::now();
    EXPECT_TRUE(run(*slow, "select repeat('x',90000) as v, sleep(0.2) from seq_1_to_90").error);
    EXPECT_LT(Clock::now() - begin, kShort.call + milliseconds(500));
}

TEST_F(LimitsTest, AForkedChildLeavesItsParentsSessionsAlone) {
    auto access = connected(2);
    const auto before = sessions(*access, 2);
    const pid_t child = fork();
    if (child == 0) {
        int failures =
            access->Execute(kDatabase, "insert into t(k) values('child')") == -2006 ? 0 : 1;
        auto own = newAccess();
        failures += own->Initialize(1, 1, true, true) ? 0 : 2;
        failures += own->Execute(kDatabase, "insert into t(k) values('own')") == 1 ? 0 : 4;
        own.reset();
        access.reset();   // as at exit
        _exit(failures);  // without the end of the server, which is the parent's
    }
    int status = -1;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    EXPECT_EQ(0, status);
    EXPECT_EQ(before, sessions(*access, 2));
    EXPECT_EQ("own", ask("select k as v from t"));
}

}  // namespace
}  // namespace dbaccess
