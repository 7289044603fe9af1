// The number of walkers follows what the walkers report: stretches made up here, so nothing
// depends on this machine's disk or load.

#include "platform/WalkerDemand.h"

#include <QtTest>

using namespace ravelinth::platform;

namespace {

constexpr std::int64_t millisecond = 1'000'000;

// One window of reports from `walkers` walkers that each ran `running` of every 10 ms.
int window(WalkerDemand &demand, std::int64_t &now, int walkers, double running) {
    int answer = 0;
    for (int step = 0; step < 5; ++step) {
        now += 10 * millisecond;
        for (int walker = 0; walker < walkers; ++walker) {
            const ThreadTimes stretch{std::int64_t(running * 10 * millisecond), 0,
                                      10 * millisecond};
            if (const int wanted = demand.report(stretch, now))
                answer = wanted;
        }
    }
    return answer;
}

} // namespace

class WalkerDemandTest : public QObject {
    Q_OBJECT

private slots:
    void startsWithTwoPerCore() {
        QCOMPARE(WalkerDemand(32, 2, false).initial(), 4);
        QCOMPARE(WalkerDemand(32, 8, false).initial(), 16);
        QCOMPARE(WalkerDemand(3, 8, false).initial(), 3);
    }

    void walkersBusyOnTheProcessorGetNoCompany() {
        WalkerDemand demand(32, 2, false);
        std::int64_t now = 0;
        for (int i = 0; i < 20; ++i)
            QCOMPARE(window(demand, now, 4, 0.95), 0);
    }

    void walkersAsleepOnTheDeviceGetCompanyWhileItPays() {
        WalkerDemand demand(32, 2, false);
        std::int64_t now = 0;
        int walkers = demand.initial();
        // Each walker runs a fifth of the time however many there are: the walk speeds up with
        // each step, up to the most allowed.
        for (int i = 0; i < 20; ++i) {
            if (const int wanted = window(demand, now, walkers, 0.2))
                walkers = wanted;
        }
        QCOMPARE(walkers, 32);
    }

    // A solid-state disk is kept busy only by many requests at once; a rotating one is not
    // crowded by them.
    void theFirstStepDependsOnTheKindOfDisk() {
        for (const auto &[rotating, cores, expected] :
             {std::tuple{false, 2, 16}, std::tuple{false, 8, 32}, std::tuple{true, 2, 6}}) {
            WalkerDemand demand(32, cores, rotating);
            std::int64_t now = 0;
            int first = 0;
            for (int i = 0; i < 4 && first == 0; ++i)
                first = window(demand, now, demand.initial(), 0.2);
            QCOMPARE(first, expected);
        }
    }

    void aStepThatDoesNotPayEndsTheGrowth() {
        WalkerDemand demand(32, 2, true);
        std::int64_t now = 0;
        int walkers = demand.initial();
        // The device is saturated: the walkers together get the same work done however many.
        const auto runningEach = [&] { return 0.8 / walkers; };
        for (int i = 0; i < 8; ++i) {
            if (const int wanted = window(demand, now, walkers, runningEach()))
                walkers = wanted;
        }
        QVERIFY(walkers > demand.initial());
        QVERIFY(walkers < 32);
    }

    void aThreadsTimesAndADisksKindCanBeRead() {
        ThreadClock clock;
        ThreadTimes times;
        if (clock.read(times)) {
            QVERIFY(times.running > 0);
            QVERIFY(times.elapsed > 0);
        }
        QVERIFY(!isOnRotatingDisk("/no/such/folder"));
    }
};

QTEST_GUILESS_MAIN(WalkerDemandTest)
#include "tst_walkerdemand.moc"
