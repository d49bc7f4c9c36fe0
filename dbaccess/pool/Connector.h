#ifndef DBSERVICE_DBACCESS_POOL_CONNECTOR_H
#define DBSERVICE_DBACCESS_POOL_CONNECTOR_H

#include <memory>

#include "dbaccess/pool/Connection.h"

namespace dbaccess {

/// Opens connections of one engine. Threads: any number at once.
class Connector {
public:
    Connector() = default;
    Connector(const Connector&) = delete;
    Connector& operator=(const Connector&) = delete;
    virtual ~Connector() = default;

    /// A new connection, or null with `error` set. Takes about the connect time limit at most, for
    /// each host, and is over by the deadline.
    virtual std::unique_ptr<Connection> connect(TimePoint deadline, Error& error) = 0;

    /// As `connect`, for nobody who waits: a failure is no reason to leave the servers alone for a
    /// while, and so to answer the next one that does without having asked them.
    virtual std::unique_ptr<Connection> connectUnasked(Error& error) {
        return connect(TimePoint::max(), error);
    }

    /// Whether `tend` is to be called several times a second, by one thread.
    virtual bool wantsTending() const { return false; }
    /// Looks after the servers: whether they answer, and which is the one to be used.
    virtual void tend() {}

    /// Whether it is known that the server in use does not answer, so that there is no point in
    /// waiting for one of its connections. @return  true with `error`.
    virtual bool silent(Error& /*error*/) const { return false; }
};

}  // namespace dbaccess

#endif
