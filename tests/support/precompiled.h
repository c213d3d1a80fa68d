// What nearly every test includes, compiled once for all programs. Each source includes what it needs all the same.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <variant>
#include <vector>
