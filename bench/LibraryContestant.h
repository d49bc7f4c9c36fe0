#ifndef BENCH_LIBRARYCONTESTANT_H
#define BENCH_LIBRARYCONTESTANT_H

#include <mutex>
#include <utility>
#include <vector>

#include "bench/Contestant.h"

namespace bench {

/// The insert of a library whose statements take one row: many of them in one transaction.
template <class Session, class Statement, class Row>
class InsertByRow {
public:
    InsertByRow(Session& session, const std::string& head)
        : session_(session), statement_(session, head + parameters()) {}

    template <class RowAt>
    void operator()(int count, RowAt rowAt) {
        if (count > 1) session_.begin();
        for (int i = 0; i < count; ++i)
            statement_.run(rowAt(i));
        if (count > 1) session_.commit();
    }

private:
    /// "(?,?,?)"
    static std::string parameters() {
        std::string text = "(";
        for (std::size_t i = 0; i < std::tuple_size_v<Row>; ++i)
            text += i == 0 ? "?" : ",?";
        return text + ")";
    }

    Session& session_;
    Statement statement_;
};

/// The work in the terms of a library that runs statements:
///
///     Library::Session(place)                             one connection
///     Library::Query<Record, Arguments...>(session, text)  a kept query; called with the arguments
///                                                         it returns a vector of records
///     Library::Insert<Row>(session, head)                 a kept insert; called with a count and
///                                                         a function that gives each row's tuple
template <class Library>
class LibraryContestant final : public Contestant {
public:
    explicit LibraryContestant(const Place& place) {
        for (unsigned int i = 0; i < place.connections; ++i)
            idle_.push_back(std::make_unique<Lane>(place));
    }

    void listDevices(Digest* digest) override {
        const Lease lane(*this);
        show(lane->list(), digest);
    }

    void deviceByKey(const std::string& guid, Digest* digest) override {
        const Lease lane(*this);
        show(lane->byKey(guid), digest);
    }

    void insertDevices(const T_Device* devices, int count) override {
        const Lease lane(*this);
        int id = lane->largestId().at(0).value;
        lane->insertDevices(count, [&](int row) {
            ++id;
            return std::tuple_cat(fieldsOf(devices[row]), std::tie(std::as_const(id)));
        });
    }

    void storeFace(const T_FaceCapture& face) override {
        const Lease lane(*this);
        lane->insertFaces(1, [&](int) { return fieldsOf(face); });
    }

    void searchAlarms(const T_SearchAlarmParam& request, Digest* digest) override {
        const Lease lane(*this);
        show(lane->alarms(request.Channels->Guid, request.AlarmLevel, request.AlarmMethod,
                          request.BeginTime, request.EndTime),
             digest);
    }

    void facesBetween(unsigned int begin, unsigned int end, Digest* digest) override {
        const Lease lane(*this);
        show(lane->faces(static_cast<int>(begin), static_cast<int>(end)), digest);
    }

private:
    template <class... Types>
    using Query = typename Library::template Query<Types...>;
    template <class Row>
    using Insert = typename Library::template Insert<Row>;

    struct Lane {
        explicit Lane(const Place& place) : session(place) {}

        typename Library::Session session;
        Query<Device> list{session, kListDevices};
        Query<Device, std::string> byKey{session, kDeviceByKey};
        Query<Number> largestId{session, kLargestId};
        Query<T_AlarmInfo, std::string, int, int, std::string, std::string> alarms{session,
                                                                                   kSearchAlarms};
        Query<T_FaceCapture, int, int> faces{session, kFacesBetween};
        Insert<DeviceRow> insertDevices{session, kInsertDevice};
        Insert<FaceRow> insertFaces{session, kInsertFace};
    };

    /// The pools of the libraries lend sessions without the statements that were prepared on them.
    class Lease {
    public:
        explicit Lease(LibraryContestant& owner) : owner_(owner) {
            const std::lock_guard<std::mutex> guard(owner_.mutex_);
            lane_ = std::move(owner_.idle_.back());
            owner_.idle_.pop_back();
        }
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        ~Lease() {
            const std::lock_guard<std::mutex> guard(owner_.mutex_);
            owner_.idle_.push_back(std::move(lane_));
        }
        Lane* operator->() const { return lane_.get(); }

    private:
        LibraryContestant& owner_;
        std::unique_ptr<Lane> lane_;
    };

    template <class Record>
    static void show(const std::vector<Record>& records, Digest* digest) {
        if (digest == nullptr) return;
        for (const Record& record : records)
            digest->add(record);
    }

    std::mutex mutex_;
    std::vector<std::unique_ptr<Lane>> idle_;
};

}  // namespace bench

#endif
