#ifndef DBSERVICE_DBACCESS_SETTINGS_SETTINGS_H
#define DBSERVICE_DBACCESS_SETTINGS_SETTINGS_H

#include <chrono>
#include <cstddef>
#include <string>

#include "dbaccess/LastError.h"
#include "dbaccess/pool/Timeouts.h"

namespace dbaccess {

/// How connections over TCP are encrypted. Where it is not Off, a server that cannot do what is
/// asked is refused before anything of the login is sent.
enum class TlsMode {
    Default,         ///< see `Tls::effectiveMode`
    Off,             ///< in clear
    Required,        ///< encrypted; who answers is not asked
    VerifyCa,        ///< and a certificate of a trusted authority, for whatever name
    VerifyIdentity,  ///< and it is for the name or address of the host text
};

/// The names of files are handed to the TLS library as they are; empty: none.
struct Tls {
    TlsMode mode = TlsMode::Default;
    std::string ca;  ///< authorities that are trusted; neither it nor `caPath`: the system's
    std::string caPath;
    std::string certificate;  ///< the client's own, with `key`
    std::string key;
    std::string crl;
    std::string crlPath;
    std::string ciphers;
    std::string versions;

    /// Who names authorities wants them asked, who names anything else wants encryption.
    TlsMode effectiveMode() const;
};

/// What a DataAccess keeps to beyond the arguments of its constructor. docs/settings.md says what
/// each is, in which bounds.
struct Settings {
    Timeouts timeouts;
    std::chrono::milliseconds idle = std::chrono::seconds(60);  ///< then above the minimum it goes
    std::chrono::milliseconds age = std::chrono::minutes(30);   ///< a connection's, less up to 10 %
    std::size_t largestResult = std::size_t{1} << 30;           ///< bytes of all its rows; 0: any
    std::chrono::milliseconds slowStatement = std::chrono::seconds(10);  ///< logged; 0: none
    bool causalReads = false;  ///< each read on a cluster waits for what other nodes acknowledged
    Tls tls;
    bool fetchServerKey = true;  ///< ask an unverified server for the key that hides the password
    std::string localSocket;     ///< of "localhost"; empty: the client library's
    bool syncCommits = true;     ///< embedded: each commit is on the disk when it is acknowledged

    // For programs that ask where to connect: a DataAccess has these from its constructor.
    std::string host;
    unsigned int port = 0;
    std::string user;
    std::string password;
    std::string database;
};

/// Reads the option files, then the environment, then `options` (lines as in an option file); what
/// comes later wins. The error, if there is one, says where and which key, and no value.
Settings readSettings(const std::string& options, Error& error);

}  // namespace dbaccess

#endif
