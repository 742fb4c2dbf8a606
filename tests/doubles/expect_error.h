#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "system/error.h"

namespace scrivo {

// Holds that `work` raises an Error with this number, source and description.
inline void ExpectError(const std::function<void()>& work, std::int32_t number,
                        const std::string& source, const std::string& description) {
  try {
    work();
    ADD_FAILURE() << "no error was raised; expected: " << description;
  } catch (const Error& error) {
    EXPECT_EQ(error.number, number);
    EXPECT_EQ(error.source, source);
    EXPECT_EQ(error.description, description);
  }
}

}  // namespace scrivo
