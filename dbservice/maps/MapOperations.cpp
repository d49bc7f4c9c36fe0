#include "dbservice/DBService.h"
#include "dbservice/maps/CEMapDao.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapInfoImp(maps, count) : noDao();
}

int DBService::UpdateEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapInfoImp(maps, count) : noDao();
}

int DBService::DeleteEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapInfoImp(maps, count) : noDao();
}

T_EMapInfoList* DBService::QueryEMapInfo(const T_EMapInfo* keys, int count, bool unused) {
    return eMapDao_ ? eMapDao_->QueryEMapInfoImp(keys, count, unused) : noDao();
}

void DBService::ReleaseEMapInfoList(T_EMapInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapInfo(list);
}

int DBService::InsertEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapItemInfoImp(items, count) : noDao();
}

int DBService::UpdateEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapItemInfoImp(items, count) : noDao();
}

int DBService::DeleteEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(maps, count) : noDao();
}

int DBService::DeleteEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(items, count) : noDao();
}

T_EMapItemInfoList* DBService::QueryEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->QueryEMapItemInfoImp(maps, count) : noDao();
}

void DBService::ReleaseEMapItemInfoList(T_EMapItemInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapItemInfoListImp(list);
}

int DBService::InsertNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->InsertNodeInfoImp(nodes, count) : noDao();
}

int DBService::UpdateNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->UpdateNodeInfoImp(nodes, count) : noDao();
}

int DBService::DeleteNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->DeleteNodeInfoImp(nodes, count) : noDao();
}

T_NodeParamList* DBService::QueryNodeInfo(const T_NodeParam* keys, int count) {
    return nodeInfo_ ? nodeInfo_->QueryNodeInfoImp(keys, count) : noDao();
}

void DBService::ReleaseNodeInfo(T_NodeParamList* list) {
    if (nodeInfo_) nodeInfo_->ReleaseNodeInfo(list);
}

int DBService::InsertNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->InsertNodeElementImp(elements, count) : noDao();
}

int DBService::UpdateNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->UpdateNodeElementImp(elements, count) : noDao();
}

int DBService::DeleteNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(nodes, count) : noDao();
}

int DBService::DeleteNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(elements, count) : noDao();
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(nodes, count) : noDao();
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(elements, count) : noDao();
}

void DBService::ReleaseNodeElementList(T_NodeElementList* list) {
    if (nodeElementParam_) nodeElementParam_->ReleaseNodeElementList(list);
}

}  // namespace dbservice
