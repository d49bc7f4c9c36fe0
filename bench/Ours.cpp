#include <stdexcept>

#include "bench/Contestant.h"
#include "dbaccess/DataAccess.h"
#include "dbservice/devices/DeviceDao.h"
#include "dbservice/events/CAlarmInfoDao.h"
#include "dbservice/events/CFaceCaptureDao.h"

namespace bench {
namespace {

void expectOk(int result) {
    if (result < 0) throw std::runtime_error("ours: " + dbaccess::LastError().message);
}

/// The typed operations, on a pool of their own.
class Ours final : public Contestant {
public:
    explicit Ours(const Place& place)
        : access_((place.engine == dbaccess::Engine::Embedded ? "sqlite:" : "") + place.host,
                  place.port, place.user, place.password),
          devices_(&access_, place.database),
          alarms_(&access_, place.database),
          faces_(&access_, place.database) {
        if (!access_.Initialize(place.connections, place.connections, true, true)) expectOk(-1);
    }

    void listDevices(Digest* digest) override { show(devices_.QueryDeviceImp(""), digest); }

    void deviceByKey(const std::string& guid, Digest* digest) override {
        show(devices_.QueryDeviceImp(guid), digest);
    }

    void insertDevices(const T_Device* devices, int count) override {
        expectOk(devices_.InsertDeviceImp(devices, count));
    }

    void storeFace(const T_FaceCapture& face) override {
        expectOk(faces_.insertFaceCaptureImp(&face, 1));
    }

    void searchAlarms(const T_SearchAlarmParam& request, Digest* digest) override {
        int total = 0;
        auto* const list = alarms_.QueryAlarmInfoImp(&request, total);
        digestOf(list, digest);
        alarms_.ReleaseAlarmInfo(list);
    }

    void facesBetween(unsigned int begin, unsigned int end, Digest* digest) override {
        auto* const list = faces_.queryFaceCaptureImp(begin, end);
        digestOf(list, digest);
        faces_.relesseFaceCaptureList(list);
    }

private:
    void show(dbservice::T_DeviceList* list, Digest* digest) {
        digestOf(list, digest);
        devices_.ReleaseDevice(list);
    }

    template <class List>
    static void digestOf(const List* list, Digest* digest) {
        if (list == nullptr) throw std::runtime_error("ours: " + dbaccess::LastError().message);
        if (digest == nullptr) return;
        for (int i = 0; i < list->count; ++i)
            digest->add(list->items[i]);
    }

    dbaccess::DataAccess access_;
    dbservice::DeviceDao devices_;
    dbservice::CAlarmInfoDao alarms_;
    dbservice::CFaceCaptureDao faces_;
};

}  // namespace

std::unique_ptr<Contestant> makeOurs(const Place& place) {
    return std::make_unique<Ours>(place);
}

}  // namespace bench
