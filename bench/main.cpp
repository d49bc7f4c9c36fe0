// Compares the library with the engines' own interfaces and with other libraries: `bench/run`
// builds and runs it.
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "bench/Race.h"
#include "bench/Site.h"

namespace bench {
namespace {

using dbaccess::Engine;

constexpr int kKeyDevices = 10'000;
constexpr int kBatchDevices = 1000;  // that are there before
constexpr int kProofKeys = 1000;
constexpr int kProofRows = 3;
constexpr int kFacesInRange = 1000;

struct Options {
    bool quick = false;
    bool million = false;
    std::string only;
    std::string engine;
    std::string server;
    std::string user = "root";
    std::string output;
};

/// "10000" as "10,000".
std::string grouped(int number) {
    std::string text = std::to_string(number);
    for (auto at = static_cast<int>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), ",");
    return text;
}

std::vector<Entrant> everyone(const Place& place) {
    return {{"raw", makeRaw, place},
            {"ours", makeOurs, place},
            {"SOCI", makeSoci, place},
            {"Poco", makePoco, place}};
}

std::string threadsOf(int count) {
    return std::to_string(count) + (count == 1 ? " thread" : " threads");
}

/// Makes the work on one site, each with the database that it needs.
class Program {
public:
    explicit Program(Site& site) : site_(site) {}

    Work list(int count) const {
        Work work{"list", count, "list of " + grouped(count) + ", ordered by name",
                  everyone(site_.database("list_" + std::to_string(count), count))};
        work.proof = digestOf(
            [](Contestant& contestant, Digest* digest) { contestant.listDevices(digest); });
        work.call = [](Contestant& contestant, int) { contestant.listDevices(nullptr); };
        return work;
    }

    Work memory(int count) const {
        Work work = list(count);
        work.family = "memory";
        work.title = "memory growth, list of " + grouped(count);
        work.inMemory = true;
        return work;
    }

    Work key(int threads) const {
        Work work{"key", threads, "one by key, " + threadsOf(threads),
                  everyone(site_.database("keys", kKeyDevices)), threads};
        std::vector<std::string> keys;
        for (int i = 0; i < kKeyDevices; ++i)
            keys.push_back(keyOf(i));
        work.proof = digestOf([keys](Contestant& contestant, Digest* digest) {
            for (int i = 0; i < kProofKeys; ++i)
                contestant.deviceByKey(keys[static_cast<std::size_t>(i)], digest);
        });
        work.call = [keys](Contestant& contestant, int call) {
            contestant.deviceByKey(keys[static_cast<std::size_t>(call * 7 % kKeyDevices)], nullptr);
        };
        return work;
    }

    Work batch(int count) const {
        const Place place = site_.database("batch_" + std::to_string(count), kBatchDevices);
        Work work{
            "batch", count,
            count == 1 ? "next-Id probe and insert" : "probe and batch insert of " + grouped(count),
            everyone(place)};
        auto devices = std::make_shared<std::vector<T_Device>>();
        auto next = std::make_shared<int>(kBatchDevices);
        work.stock = [devices, count, next](int calls) {
            devices->clear();
            for (int i = 0; i < calls * count; ++i)
                devices->push_back(deviceOf((*next)++));
        };
        work.finish = [this, place, next] { expect(*next, site_.count(place, "device")); };
        work.call = [devices, count](Contestant& contestant, int call) {
            contestant.insertDevices(devices->data() + std::ptrdiff_t{call} * count, count);
        };
        work.proof = [this, place](Contestant& contestant) {
            std::vector<T_Device> written;
            for (int i = 0; i < kProofRows; ++i)
                written.push_back(deviceOf(-1 - i));
            contestant.insertDevices(written.data(), kProofRows);
            Digest digest;
            const auto reader = makeRaw(place);
            for (const T_Device& device : written) {
                reader->deviceByKey(device.Guid, &digest);
                site_.execute(place, "delete from device where Guid='" + device.Guid + "'");
            }
            return digest;
        };
        return work;
    }

    Work store(int threads) const {
        const std::string name = "store_" + std::to_string(threads);
        const Place place = site_.database(name, 0);
        const Place bare = site_.database(name + "_bare", 0, 0, false);
        Work work{"store", threads, "insert of one row, each committed, " + threadsOf(threads),
                  everyone(place), threads};
        work.entrants.push_back({"ours, no index", makeOurs, bare});
        auto faces = std::make_shared<std::vector<T_FaceCapture>>();
        auto next = std::make_shared<int>(0);
        work.stock = [faces, next](int calls) {
            faces->clear();
            for (int i = 0; i < calls; ++i)
                faces->push_back(faceOf((*next)++));
        };
        work.finish = [this, place, bare, next] {
            expect(*next, site_.count(place, "facecapture") + site_.count(bare, "facecapture"));
        };
        work.call = [faces](Contestant& contestant, int call) {
            contestant.storeFace((*faces)[static_cast<std::size_t>(call)]);
        };
        work.proof = [this, place, bare](Contestant& contestant) {
            const T_FaceCapture face = faceOf(0);
            contestant.storeFace(face);
            Digest digest;
            for (const Place& either : {place, bare}) {
                makeRaw(either)->facesBetween(face.addTime - 1, face.addTime + 1, &digest);
                site_.execute(either, "delete from facecapture");
            }
            return digest;
        };
        return work;
    }

    Work alarms(int count) const {
        Work work = events("alarms", count, "alarm search over " + grouped(count));
        work.call = [count](Contestant& contestant, int call) {
            searchAlarms(contestant, call * 7 % count, nullptr);
        };
        work.proof = digestOf([](Contestant& contestant, Digest* digest) {
            for (int i = 0; i < kProofRows; ++i)
                searchAlarms(contestant, i, digest);
        });
        return work;
    }

    Work faces(int count) const {
        Work work =
            events("faces", count,
                   "range of " + grouped(kFacesInRange) + " of " + grouped(count) + " faces");
        work.call = [count](Contestant& contestant, int call) {
            facesFrom(contestant, call * 7 % (count - kFacesInRange), nullptr);
        };
        work.proof = digestOf(
            [](Contestant& contestant, Digest* digest) { facesFrom(contestant, 0, digest); });
        return work;
    }

private:
    static void expect(int sent, int found) {
        if (sent != found)
            throw std::runtime_error(std::to_string(sent) + " rows were sent, " +
                                     std::to_string(found) + " are there");
    }

    template <class Read>
    static std::function<Digest(Contestant&)> digestOf(Read read) {
        return [read](Contestant& contestant) {
            Digest digest;
            read(contestant, &digest);
            return digest;
        };
    }

    static void searchAlarms(Contestant& contestant, int number, Digest* digest) {
        dbservice::T_Channel channel;
        contestant.searchAlarms(searchOf(number, channel), digest);
    }

    static void facesFrom(Contestant& contestant, int number, Digest* digest) {
        const unsigned int begin = faceOf(number).addTime;
        contestant.facesBetween(begin, begin + kFacesInRange + 1, digest);
    }

    Work events(const std::string& family, int count, const std::string& title) const {
        const std::string name = "events_" + std::to_string(count);
        Work work{family, count, title, everyone(site_.database(name, 0, count))};
        work.entrants.push_back(
            {"ours, no index", makeOurs, site_.database(name + "_bare", 0, count, false)});
        return work;
    }

    Site& site_;
};

void print(std::FILE* file, const char* engine, const Work& work, const Result& result) {
    std::fprintf(file, "%s;%s;%d;%s;%s;%.3f;%.3f;%.3f;%.3f;%.9g;%d\n", engine, work.family.c_str(),
                 work.size, work.title.c_str(), result.name.c_str(), result.wall.low,
                 result.wall.median, result.wall.high, result.cpu, result.absolute, result.rounds);
    std::fflush(file);
}

/// The server to measure; without a host when it is to be a private one.
Place serverOf(const Options& options) {
    Place place;
    if (options.server.empty()) return place;
    const std::size_t colon = options.server.find(':');
    place.host = options.server.substr(0, colon);
    place.port = colon == std::string::npos
                     ? 3306
                     : static_cast<unsigned int>(std::stoul(options.server.substr(colon + 1)));
    place.user = options.user;
    if (const char* const password = std::getenv("BENCH_PASSWORD")) place.password = password;
    return place;
}

/// The works of one family, by their sizes.
struct Family {
    std::string name;
    Work (Program::*make)(int) const;
    std::vector<int> quick;
    std::vector<int> sizes;
    std::vector<int> million = {};
};

/// Memory first: little was allocated before.
const std::vector<Family> kFamilies = {
    {"memory", &Program::memory, {}, {100'000}},
    {"list", &Program::list, {1000, 10'000}, {1000, 10'000, 100'000}, {1'000'000}},
    {"key", &Program::key, {1, 2, 8}, {1, 2, 4, 8, 16}},
    {"batch", &Program::batch, {1, 1000}, {1, 10, 100, 1000, 10'000}},
    {"store", &Program::store, {1, 8}, {1, 2, 4, 8, 16}},
    {"alarms", &Program::alarms, {}, {100'000}, {1'000'000}},
    {"faces", &Program::faces, {}, {100'000}, {1'000'000}},
};

std::vector<int> sizesOf(const Family& family, const Options& options) {
    std::vector<int> sizes = options.quick ? family.quick : family.sizes;
    if (options.million) sizes.insert(sizes.end(), family.million.begin(), family.million.end());
    const auto unwanted = [&](int size) {
        return !options.only.empty() && options.only != family.name &&
               options.only != family.name + "_" + std::to_string(size);
    };
    sizes.erase(std::remove_if(sizes.begin(), sizes.end(), unwanted), sizes.end());
    return sizes;
}

void run(const Options& options, Engine engine, std::FILE* output) {
    const char* const name = engine == Engine::Server ? "server" : "embedded";
    if (!options.engine.empty() && options.engine != name) return;
    Site site(engine, serverOf(options));
    const Program program(site);
    const Pace pace = options.quick ? Pace{0.01, 1.5} : Pace{0.03, 6};
    for (const Family& family : kFamilies) {
        for (const int size : sizesOf(family, options)) {
            const Work work = (program.*family.make)(size);
            std::fprintf(stderr, "%-8s %s:", name, work.title.c_str());
            for (const Result& result : race(work, pace, site.serverClock())) {
                print(output, name, work, result);
                std::fprintf(stderr, "  %s %.2f", result.name.c_str(), result.wall.median);
            }
            std::fprintf(stderr, "\n");
        }
    }
}

/// In a process of its own, so that each engine begins with a fresh heap.
void runApart(const Options& options, Engine engine, std::FILE* output) {
    const pid_t process = ::fork();
    if (process == 0) {
        try {
            run(options, engine, output);
            ::_exit(0);
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "\n%s\n", failure.what());
            ::_exit(1);
        }
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    if (status != 0) throw std::runtime_error("the run did not end well");
}

int measure(int argc, char** argv) {
    Options options;
    CLI::App app("Measures the library against the engines' own interfaces and other libraries.");
    app.add_flag("--quick", options.quick, "fewer rows and rounds: about a minute");
    app.add_flag("--million", options.million, "lists and events of 1,000,000 rows too");
    app.add_option("--only", options.only, "one family of rows, or one of them, as list_10000");
    app.add_option("--engine", options.engine, "one engine alone")
        ->check(CLI::IsMember({"server", "embedded"}));
    app.add_option("--server", options.server,
                   "HOST:PORT of a server to measure instead of a private one; its password is "
                   "taken from BENCH_PASSWORD. Databases bench_... are made there and dropped");
    app.add_option("--user", options.user, "account there");
    app.add_option("--output", options.output, "file for the figures")->required();
    CLI11_PARSE(app, argc, argv);
    std::FILE* const output = std::fopen(options.output.c_str(), "we");
    if (output == nullptr) throw std::runtime_error(options.output + ": cannot be written");
    std::fprintf(output,
                 "engine;family;size;title;contestant;low;median;high;cpu;absolute;rounds\n");
    std::fflush(output);
    for (const Engine engine : {Engine::Server, Engine::Embedded})
        runApart(options, engine, output);
    return std::fclose(output) == 0 ? 0 : 1;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    try {
        return bench::measure(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "\n%s\n", failure.what());
        return 1;
    }
}
