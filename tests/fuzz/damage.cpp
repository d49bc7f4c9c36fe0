// A database file and its WAL with any bytes changed, or cut short: opened, read and written by the
// embedded engine without a crash, within its limits, and each failure has a number that says it is
// the file's. An input is a list of changes: two bytes say where, one what is there then. A byte
// left over behind the last one cuts the file there.
#include <fstream>
#include <iterator>

#include "tests/fuzz/Fuzz.h"

namespace dbaccess {
namespace {

const char* const kEndings[] = {"", "-wal"};

std::string pathOf(const char* ending) {
    return directory() + "/fuzz.db" + ending;
}

/// Runs the statements. @return  whether all of them did what they say.
bool run(Connection& connection, std::initializer_list<const char*> statements) {
    bool good = true;
    for (const char* const text : statements) {
        const Outcome outcome = connection.run("fuzz", Statement(text));
        require(outcome.error.number != kSyntaxError && outcome.error.number != kUnknownError,
                "a damaged file is no fault of the statement's");
        std::string value;
        while (outcome.rows && outcome.rows->next())
            outcome.rows->getString("c", value);
        good = good && !outcome.error;
    }
    return good;
}

/// The files of a sound database, whose last changes are in the WAL.
std::vector<std::string> makeFiles() {
    openDatabase("create table t(a varchar(20) primary key,b int,c text) without rowid");
    auto connection = openDatabase();
    require(run(*connection, {"create index i on t(c,b)", "create table u(a integer primary key,c)",
                              "insert into t with recursive n(b) as (select 1 union all select b+1 "
                              "from n where b<40) select b+1000,b,hex(zeroblob(b*5)) from n",
                              "insert into u values(1,hex(zeroblob(4500))),(2,'two')"}),
            "the tables are made");
    connection = openDatabase();
    run(*connection, {"update t set c='new' where b<3"});
    std::vector<std::string> files;
    for (const char* const ending : kEndings) {
        std::ifstream file(pathOf(ending), std::ios::binary);
        files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return files;
}

}  // namespace

void tryInput(const std::string& input) {
    static const std::vector<std::string> sound = makeFiles();
    std::vector<std::string> files = sound;
    for (std::size_t i = 0; i + 3 <= input.size(); i += 3) {
        std::size_t place =
            static_cast<std::uint8_t>(input[i]) + 256U * static_cast<std::uint8_t>(input[i + 1]);
        const bool inFile = place < sound[0].size();
        std::string& file = files[inFile ? 0 : 1];
        if (!inFile) place -= sound[0].size();
        if (place < file.size()) file[place] = input[i + 2];
        if (input.size() - i == 4) file.resize(std::min(place, file.size()));
    }
    std::remove(pathOf("-shm").c_str());
    for (std::size_t i = 0; i < files.size(); ++i)
        std::ofstream(pathOf(kEndings[i]), std::ios::binary) << files[i];
    run(*openDatabase(),
        {"select a,b,c from t order by c", "select count(*) from u", "select c from u where a=1",
         "insert into t values('new',1,'x'),('newer',2,'y')", "update t set c='z' where b>5",
         "delete from t where a='1007'", "replace into u values(2,'2')", "delete from u",
         "create table v(a int)"});
}

}  // namespace dbaccess
