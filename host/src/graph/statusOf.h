#pragma once

#include "types/api.h"
#include "types/error.h"

#include <maya/MStatus.h>

#include <exception>

namespace host {

/// Runs a piece of the interface: no exception leaves, a refusal becomes kFailure and the given answer.
template <class Answer, class Function>
Answer answer(MStatus* status, Answer otherwise, const Function& function)
{
    try {
        Answer result = function();
        report(status, MStatus::kSuccess);
        return result;
    } catch (const std::exception&) {
        report(status, MStatus::kFailure);
        return otherwise;
    }
}

/// The same for calls that answer with their status.
template <class Function>
MStatus statusOf(const Function& function)
{
    try {
        function();
        return MStatus::kSuccess;
    } catch (const std::exception&) {
        return MStatus::kFailure;
    }
}

} // namespace host
