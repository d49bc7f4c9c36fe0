// Writes whose doubt is settled, on a server that is killed under them.
#include <atomic>
#include <mutex>
#include <set>

#include "dbservice/Convenience.h"
#include "schema/Schema.h"
#include "tests/fault/FaultTest.h"

namespace dbservice {
namespace {

using namespace std::chrono_literals;
constexpr auto kWithin = std::chrono::seconds(30);

class SettledTest : public dbaccess::FaultTest {
protected:
    SettledTest() {
        EXPECT_EQ(0, schema::Create(admin_, dbaccess::kDatabase));
        for (const char* table : {"serverinfo", "channel", "alarminfo"})
            admin(std::string("delete from ") + table);
        DB_CONNECTION_PROPERTY settings;
        settings.host = server().host();
        settings.port = static_cast<int>(server().port());
        settings.user = server().user();
        settings.password = server().password();
        settings.dbName = dbaccess::kDatabase;
        EXPECT_EQ(1, DBService::Initialize(settings));
    }
    ~SettledTest() override { DBService::Cleanup(); }

    static DBService& service() { return *DBService::GetDBServiceObject(); }
};

/// What a lost acknowledgement, a lost statement, and another's key end in.
TEST_F(SettledTest, LooksBeforeItSendsAgain) {
    T_AlarmInfo alarms[2];
    int sent = 0;
    const auto settle = [&](bool reached, std::chrono::milliseconds within) {
        sent = 0;
        const auto insert = [&](DBService& to, const T_AlarmInfo* first, int count) {
            if (sent++ > 0) return storeAlarms(to, first, count);
            if (reached) expectOk(storeAlarms(to, first, count));
            return -2013;
        };
        return insertSettled(service(), insert, alarms, 2, within);
    };
    alarms[0].Guid = newGuid();
    alarms[1].Guid = newGuid();
    EXPECT_TRUE(settle(true, kWithin).ok());
    EXPECT_EQ(1, sent);
    alarms[1].Guid = newGuid();
    EXPECT_EQ(ErrorNumber::kDuplicateKey, settle(false, kWithin).number());
    alarms[0].Guid = newGuid();
    EXPECT_TRUE(settle(false, kWithin).ok());
    EXPECT_EQ(2, sent);
    EXPECT_EQ("4", ask("select count(*) as v from alarminfo"));

    server().kill9();
    EXPECT_TRUE(isInDoubt(settle(false, 100ms)));
    EXPECT_TRUE(isInDoubt(writeSettled([] { return -2013; }, 100ms)));
    server().start();
}

/// What each call of a kind was answered, by its key.
class Ledger {
public:
    bool add(const std::string& key, const Result& answer) {
        EXPECT_TRUE(answer.ok() || mayPass(answer.number())) << answer.error().number;
        const std::lock_guard<std::mutex> lock(mutex_);
        keys_[answer.ok()].insert(key);
        return answer.ok();
    }
    /// Joined as `ask` joins rows.
    std::string keys(bool done) const {
        std::string text;
        for (const std::string& key : keys_[done])
            text += (text.empty() ? "" : "|") + key;
        return text;
    }

private:
    std::mutex mutex_;
    std::set<std::string> keys_[2];
};

TEST_F(SettledTest, EveryCallIsDoneOrNotDoneUnderKills) {
    Ledger inserts;
    Ledger batches;
    Ledger updates;
    Ledger deletes;
    std::atomic<int> doubts{0};
    std::atomic<bool> over{false};
    const auto counted = [&](int answer) {
        if (isInDoubt(answer)) ++doubts;
        return answer;
    };
    const auto insertBatch = [&](DBService& to, const T_Channel* first, int count) {
        return counted(to.InsertChannel(first, count));
    };
    const auto write = [&] {
        T_ServerInfo server;
        server.Guid = newGuid();
        if (!inserts.add(server.Guid,
                         insertSettled(service(), &DBService::InsertServerInfo, server, kWithin)))
            return;
        server.DisplayName = "changed";
        updates.add(
            server.Guid,
            writeSettled([&] { return counted(service().UpdateServerInfo(server)); }, kWithin));
        T_Channel channels[3];
        for (T_Channel& channel : channels) {
            channel.Guid = newGuid();
            channel.Device_Guid = channels[0].Guid;
        }
        if (!batches.add(channels[0].Guid,
                         insertSettled(service(), insertBatch, channels, 3, kWithin)))
            return;
        deletes.add(
            channels[0].Guid,
            writeSettled([&] { return counted(service().DeleteChannel("", channels[2].Guid)); },
                         kWithin));
    };
    testing::internal::CaptureStderr();
    std::vector<std::thread> writers;
    for (int thread = 0; thread < 6; ++thread)
        writers.emplace_back([&] {
            while (!over)
                write();
        });
    for (int round = 0; round < 20 && (round < 4 || doubts < 10); ++round) {
        std::this_thread::sleep_for(200ms);
        server().kill9();
        std::this_thread::sleep_for(50ms);
        server().start();
    }
    std::this_thread::sleep_for(200ms);
    over = true;
    for (std::thread& writer : writers)
        writer.join();
    testing::internal::GetCapturedStderr();
    EXPECT_LE(10, doubts);
    EXPECT_EQ(inserts.keys(true), ask("select Guid as v from serverinfo order by Guid"));
    EXPECT_EQ(updates.keys(true),
              ask("select Guid as v from serverinfo where DisplayName='changed' order by Guid"));
    const std::string batch = "select Device_Guid as v from channel group by Device_Guid having ";
    EXPECT_EQ(batches.keys(true), ask(batch + "count(*) in (2,3) order by Device_Guid"));
    EXPECT_EQ(deletes.keys(false), ask(batch + "count(*)=3 order by Device_Guid"));
}

}  // namespace
}  // namespace dbservice
