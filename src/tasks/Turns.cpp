#include "tasks/Turns.h"

#include <utility>

namespace kestrelbay {

Turns::Turn::Turn(std::uint64_t number, std::chrono::milliseconds patience, Neighbour previous,
                  std::shared_ptr<std::atomic<std::uint64_t>> lastClaim)
    : number_(number),
      patience_(patience),
      previous_(std::move(previous)),
      lastClaim_(std::move(lastClaim)) {}

Turns::Turn::~Turn() {
    if (hasRun_)
        return;
    began_.set_value({});
    ended_.set_value();
}

bool Turns::Turn::isNext() const {
    return previous_.ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

void Turns::Turn::run(const std::function<void()> &work) {
    previous_.ended.wait_until(previous_.began.get() + patience_);
    hasRun_ = true;
    began_.set_value(Clock::now());
    work();
    ended_.set_value();
}

bool Turns::Turn::claim() {
    std::uint64_t last = *lastClaim_;
    while (last < number_ && !lastClaim_->compare_exchange_weak(last, number_)) {
    }
    return last <= number_;
}

Turns::Turns(std::chrono::milliseconds patience) : patience_(patience) {
    std::promise<Clock::time_point> began;
    std::promise<void> ended;
    began.set_value({});
    ended.set_value();
    last_ = {began.get_future().share(), ended.get_future().share()};
}

std::shared_ptr<Turns::Turn> Turns::take() {
    auto turn = std::make_shared<Turn>(++taken_, patience_, last_, lastClaim_);
    last_ = {turn->began_.get_future().share(), turn->ended_.get_future().share()};
    return turn;
}

}  // namespace kestrelbay
