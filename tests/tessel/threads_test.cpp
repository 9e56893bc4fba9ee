#include <array>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "library.h"

namespace tessel::core::testing {
namespace {

TEST(Threads, eachUsesAModelOfItsOwnAndLeavesItToAnother) {
    std::array<std::vector<boost::uuids::uuid>, 4> uuids;
    std::array<Book, 4> last;
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < last.size(); ++i) {
        threads.emplace_back([&, i] {
            const auto model = Model::create({});
            const auto shelf = committed(model, [&] { return createElement<Shelf>(model); });
            for (int round = 0; round < 500; ++round) {
                auto transaction = model->beginTransaction();
                shelf->books.clear();
                last[i] = makeBook(model);
                shelf->books.push_back(last[i]);
                uuids[i].push_back(last[i]->getUuid());
                if (round % 2 == 1) {
                    transaction.commit();
                }
            }
        });
    }
    threads.clear();
    std::set<boost::uuids::uuid> all;
    for (const auto& each : uuids) {
        all.insert(each.begin(), each.end());
    }
    EXPECT_EQ(all.size(), 4U * 500U);
    for (auto& book : last) {
        const auto model = book->getModel();
        committed(model, [&] { return makePerson(model, u"Eve", 20); });
        book = Book();
    }
    EXPECT_EQ(Census::living, 0);
}

TEST(Processes, parentAndChildMakeDifferentUuids) {
    const auto fresh = [] {
        const auto model = Model::create({});
        return committed(model, [&] { return makeBook(model); })->getUuid();
    };
    (void)fresh();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        const auto uuid = fresh();
        _exit(write(ends[1], &uuid, sizeof uuid) == sizeof uuid ? 0 : 1);
    }
    boost::uuids::uuid theirs;
    ASSERT_EQ(read(ends[0], &theirs, sizeof theirs), ssize_t{sizeof theirs});
    EXPECT_NE(fresh(), theirs);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
}

}  // namespace
}  // namespace tessel::core::testing
