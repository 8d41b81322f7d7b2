#include "sweep.h"

#include <stdexcept>

namespace pxktest {

const std::vector<int>& sweepWidths() {
    static const std::vector<int> widths = [] {
        std::vector<int> w;
        for (int i = 1; i <= 40; ++i) w.push_back(i);
        for (int i : {59, 67, 130, 301, 1920}) w.push_back(i);
        return w;
    }();
    return widths;
}

std::vector<int> sweepHeights(int width) {
    if (width <= 40) return {1, 2, 3, 5};
    if (width <= 301) return {1, 3};
    return {1, 2};
}

const std::vector<StepKind>& allStepKinds() {
    static const std::vector<StepKind> kinds = {StepKind::Tight, StepKind::Padded,   StepKind::Odd,
                                                StepKind::Zero,  StepKind::Negative, StepKind::NegativeTight};
    return kinds;
}

const char* stepKindName(StepKind kind) {
    switch (kind) {
        case StepKind::Tight:
            return "Tight";
        case StepKind::Padded:
            return "Padded";
        case StepKind::Odd:
            return "Odd";
        case StepKind::Zero:
            return "Zero";
        case StepKind::Negative:
            return "Negative";
        case StepKind::NegativeTight:
            return "NegativeTight";
    }
    return "?";
}

int stepFor(StepKind kind, std::size_t rowBytes) {
    const int r = static_cast<int>(rowBytes);
    switch (kind) {
        case StepKind::Tight:
            return r;
        case StepKind::Padded:
            return r + 32;
        case StepKind::Odd:
            return (r % 2 == 0) ? r + 3 : r + 2;
        case StepKind::Zero:
            return 0;
        case StepKind::Negative:
            return -(r + 7);
        case StepKind::NegativeTight:
            return -r;
    }
    throw std::invalid_argument("unknown step kind");
}

const std::vector<StepPlan>& stepPlans() {
    static const std::vector<StepPlan> plans = {
        {StepKind::Tight, StepKind::Tight},
        {StepKind::Padded, StepKind::Odd},
        {StepKind::Odd, StepKind::Padded},
        {StepKind::Negative, StepKind::Negative},
        {StepKind::NegativeTight, StepKind::Padded},
        {StepKind::Tight, StepKind::NegativeTight},
        {StepKind::Zero, StepKind::Padded},
        {StepKind::Odd, StepKind::Zero},
        {StepKind::Zero, StepKind::Zero},
    };
    return plans;
}

std::string stepPlanName(const StepPlan& plan) {
    return std::string("src") + stepKindName(plan.src) + "_dst" + stepKindName(plan.dst);
}

}  // namespace pxktest
