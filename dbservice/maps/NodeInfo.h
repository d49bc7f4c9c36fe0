#ifndef DBSERVICE_MAPS_NODEINFO_H
#define DBSERVICE_MAPS_NODEINFO_H

#include <string>

#include "base/Export.h"
#include "dbservice/maps/MapRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table nodeinfo. The service makes no such object, and its operations of this name answer
/// as if it were not connected: construct one over a DataAccess of your own. Texts go into the
/// statements as they are. Lists go back to the Release operation here: the service's does nothing.
class DBSERVICE_API NodeInfo {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    NodeInfo(dbaccess::DataAccess* dataAccess, std::string dbName);
    NodeInfo(const NodeInfo&) = default;
    NodeInfo& operator=(const NodeInfo&) = default;

    /// Adds folders, all or none.
    /// @return  0, -1 without records, or the negated MySQL error number.
    int InsertNodeInfoImp(const T_NodeParam* nodes, int count);
    /// Replaces folders by their NodeGuid, all or none; those that are not there are added.
    int UpdateNodeInfoImp(const T_NodeParam* nodes, int count);
    /// Deletes the folders with these NodeGuids, but nothing in them.
    /// @return  their number, -1 without records, or the negated error number: -1064 when every key
    ///          is empty, and when a record without a key follows one with a key.
    int DeleteNodeInfoImp(const T_NodeParam* nodes, int count);
    /// The folders with these NodeGuids, or with a count below 1 or no key all of them, by name. An
    /// empty list when there is none; null when the query failed, as with a record without a key
    /// behind one with a key.
    T_NodeParamList* QueryNodeInfoImp(const T_NodeParam* keys, int count);
    void ReleaseNodeInfo(T_NodeParamList* list);  ///< frees such a list; null is ignored

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_NodeParam* node);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
