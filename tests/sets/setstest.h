// What the tests of sets share.
#pragma once

#include "sets/setsource.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

// Whether one of the faults holds that text and has that place.
inline testing::AssertionResult holdsFault(const std::vector<Fault>& faults,
                                           const std::string& what, const std::string& where,
                                           bool warning) {
    std::string found;
    for (const Fault& fault : faults) {
        if (fault.what.find(what) != std::string::npos && fault.where == where &&
            fault.warning == warning) {
            return testing::AssertionSuccess() << what;
        }
        found += "\n" + fault.what + ", " + fault.where;
    }
    return testing::AssertionFailure() << what << ", " << where << " is not among:" << found;
}

}  // namespace packwise::sets
