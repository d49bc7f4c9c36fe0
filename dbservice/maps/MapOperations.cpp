#include "dbservice/DBService.h"
#include "dbservice/maps/CEMapDao.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::kNoDao;

int DBService::InsertEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapInfoImp(maps, count) : kNoDao;
}

int DBService::UpdateEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapInfoImp(maps, count) : kNoDao;
}

int DBService::DeleteEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapInfoImp(maps, count) : kNoDao;
}

T_EMapInfoList* DBService::QueryEMapInfo(const T_EMapInfo* keys, int count, bool unused) {
    return eMapDao_ ? eMapDao_->QueryEMapInfoImp(keys, count, unused) : nullptr;
}

void DBService::ReleaseEMapInfoList(T_EMapInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapInfo(list);
}

int DBService::InsertEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapItemInfoImp(items, count) : kNoDao;
}

int DBService::UpdateEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapItemInfoImp(items, count) : kNoDao;
}

int DBService::DeleteEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(maps, count) : kNoDao;
}

int DBService::DeleteEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(items, count) : kNoDao;
}

T_EMapItemInfoList* DBService::QueryEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->QueryEMapItemInfoImp(maps, count) : nullptr;
}

void DBService::ReleaseEMapItemInfoList(T_EMapItemInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapItemInfoListImp(list);
}

int DBService::InsertNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->InsertNodeInfoImp(nodes, count) : kNoDao;
}

int DBService::UpdateNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->UpdateNodeInfoImp(nodes, count) : kNoDao;
}

int DBService::DeleteNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->DeleteNodeInfoImp(nodes, count) : kNoDao;
}

T_NodeParamList* DBService::QueryNodeInfo(const T_NodeParam* keys, int count) {
    return nodeInfo_ ? nodeInfo_->QueryNodeInfoImp(keys, count) : nullptr;
}

void DBService::ReleaseNodeInfo(T_NodeParamList* list) {
    if (nodeInfo_) nodeInfo_->ReleaseNodeInfo(list);
}

int DBService::InsertNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->InsertNodeElementImp(elements, count) : kNoDao;
}

int DBService::UpdateNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->UpdateNodeElementImp(elements, count) : kNoDao;
}

int DBService::DeleteNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(nodes, count) : kNoDao;
}

int DBService::DeleteNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(elements, count) : kNoDao;
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(nodes, count) : nullptr;
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(elements, count) : nullptr;
}

void DBService::ReleaseNodeElementList(T_NodeElementList* list) {
    if (nodeElementParam_) nodeElementParam_->ReleaseNodeElementList(list);
}

}  // namespace dbservice
