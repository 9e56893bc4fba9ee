#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "library.h"

namespace tessel::core::testing {
namespace {

TEST(Threads, eachUsesAModelOfItsOwn) {
    constexpr std::size_t count = 4;
    std::vector<std::vector<boost::uuids::uuid>> uuids(count);
    std::vector<Book> last(count);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < count; ++i) {
            threads.emplace_back([&, i] {
                const auto model = Model::create({});
                const auto shelf = committed(model, [&] { return createElement<Shelf>(model); });
                for (int round = 0; round < 50; ++round) {
                    auto transaction = model->beginTransaction();
                    shelf->books.clear();
                    for (int k = 0; k < 20; ++k) {
                        last[i] = makeBook(model);
                        shelf->books.push_back(last[i]);
                        uuids[i].push_back(last[i]->getUuid());
                    }
                    if (round % 2 == 1) {
                        transaction.commit();
                    }
                }
            });
        }
    }
    std::set<boost::uuids::uuid> all;
    for (const auto& each : uuids) {
        all.insert(each.begin(), each.end());
    }
    EXPECT_EQ(all.size(), count * 50 * 20);

    // What one thread leaves, another may take over.
    for (auto& book : last) {
        const auto model = book->getModel();
        auto transaction = model->beginTransaction();
        book->owner.set(makePerson(model, u"Eve", 20));
        transaction.commit();
        EXPECT_EQ(text(book), "of Eve 20 by [Bob 40, Cid 50, Dan 60, ] marked [1, 2, ]");
        book = Book();
    }
    EXPECT_EQ(Census::living, 0);
}

}  // namespace
}  // namespace tessel::core::testing
