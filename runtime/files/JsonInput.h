// parseJsonDocument: untrusted JSON text into a document that keeps the order of its keys.
//
// Refuses text that is not JSON, with the parser's account of where it broke, and text nested
// deeper than kMaxJsonDepth, which no scene needs and which would exhaust the stack of code that
// walks the document recursively. Never throws.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

namespace runtime {

constexpr int kMaxJsonDepth = 128;

bool parseJsonDocument(const char* text, std::size_t size, nlohmann::ordered_json& document,
                       std::string& problem);

} // namespace runtime
