#ifndef DBSERVICE_DBACCESS_MARIADB_UNREAD_H
#define DBSERVICE_DBACCESS_MARIADB_UNREAD_H

#include <mysql.h>
#include <sys/socket.h>

namespace dbaccess::mariadb {

/// A result that is being read. When reading ends before its time, the session is cut: the client
/// library would take in all the rest first, and there may be no end to it.
class Unread {
public:
    explicit Unread(MYSQL* session) : session_(session) {}
    Unread(const Unread&) = delete;
    Unread& operator=(const Unread&) = delete;
    ~Unread() {
        if (unread_) shutdown(static_cast<int>(mysql_get_socket(session_)), SHUT_RDWR);
    }

    void isRead() { unread_ = false; }

private:
    MYSQL* const session_;
    bool unread_ = true;
};

}  // namespace dbaccess::mariadb

#endif
