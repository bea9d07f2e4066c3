#pragma once

#include "../../src/foundation/pch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
