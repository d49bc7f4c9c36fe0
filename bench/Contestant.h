#ifndef BENCH_CONTESTANT_H
#define BENCH_CONTESTANT_H

#include <memory>
#include <string>

#include "bench/Records.h"
#include "dbaccess/Engine.h"

namespace bench {

/// A database, and how many connections to open to it.
struct Place {
    dbaccess::Engine engine = dbaccess::Engine::Server;
    std::string host;  ///< embedded: the directory
    unsigned int port = 0;
    std::string user;
    std::string password;
    std::string database;
    unsigned int connections = 1;

    std::string file() const { return host + "/" + database + ".db"; }
};

/// One way to do the work that is compared. What goes wrong is thrown.
///
/// Queries make records of all columns, show them to the digest unless that is null, and free them.
/// Threads: as many at once as the place has connections; each call leases one.
class Contestant {
public:
    Contestant() = default;
    Contestant(const Contestant&) = delete;
    Contestant& operator=(const Contestant&) = delete;
    virtual ~Contestant() = default;

    /// All devices, by their names.
    virtual void listDevices(Digest* digest) = 0;
    virtual void deviceByKey(const std::string& guid, Digest* digest) = 0;
    /// Asks for the largest Id and adds the devices with those behind it, all or none.
    virtual void insertDevices(const T_Device* devices, int count) = 0;
    /// Adds one row, which is on the disk at the return.
    virtual void storeFace(const T_FaceCapture& face) = 0;
    /// Of the one channel that the request names, all that match.
    virtual void searchAlarms(const T_SearchAlarmParam& request, Digest* digest) = 0;
    virtual void facesBetween(unsigned int begin, unsigned int end, Digest* digest) = 0;
};

std::unique_ptr<Contestant> makeOurs(const Place& place);
/// What all are compared with: the engine's C interface, used by hand.
std::unique_ptr<Contestant> makeRaw(const Place& place);
std::unique_ptr<Contestant> makeSoci(const Place& place);
std::unique_ptr<Contestant> makePoco(const Place& place);

}  // namespace bench

#endif
