#ifndef DBSERVICE_MAPS_NODEELEMENTPARAM_H
#define DBSERVICE_MAPS_NODEELEMENTPARAM_H

#include <string>

#include "base/Export.h"
#include "dbservice/maps/MapRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table nodeelement. The service makes no such object, and its operations of this name answer
/// as if it were not connected: construct one over a DataAccess of your own. Texts go into the
/// statements as they are. Lists go back to the Release operation here: the service's does nothing.
class DBSERVICE_API NodeElementParam {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    NodeElementParam(dbaccess::DataAccess* dataAccess, std::string dbName);
    NodeElementParam(const NodeElementParam&) = default;
    NodeElementParam& operator=(const NodeElementParam&) = default;

    /// Adds elements, all or none. Results as in NodeInfo.
    int InsertNodeElementImp(const T_NodeElementParam* elements, int count);
    /// Replaces elements by their Guid, all or none; those that are not there are added.
    int UpdateNodeElementImp(const T_NodeElementParam* elements, int count);

    /// @{
    /// Deletes the elements of these folders, of every user, or those with these Guids. Keys and
    /// results as in NodeInfo.
    int DeleteNodeElementImp(const T_NodeParam* nodes, int count);
    int DeleteNodeElementImp(const T_NodeElementParam* elements, int count);
    /// @}

    /// @{
    /// The elements of these folders, or with these Guids, by name. Keys and results as there.
    T_NodeElementList* QueryNodeElementImp(const T_NodeParam* nodes, int count);
    T_NodeElementList* QueryNodeElementImp(const T_NodeElementParam* elements, int count);
    /// @}

    void ReleaseNodeElementList(T_NodeElementList* list);  ///< frees such a list; null is ignored

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_NodeElementParam* element);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
