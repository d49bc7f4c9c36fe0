#ifndef DBSERVICE_DBACCESS_ENGINE_H
#define DBSERVICE_DBACCESS_ENGINE_H

namespace dbaccess {

/// Which kind of database a `DataAccess` speaks to.
enum class Engine {
    Server,    ///< a MariaDB or MySQL server
    Embedded,  ///< SQLite files in a directory of this machine
};

}  // namespace dbaccess

#endif
