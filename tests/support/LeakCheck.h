#pragma once

namespace tavio::test {

// From here on a test fails that leaves objects of the library, fakes, texts, arrays or other blocks of COM's memory alive
// that it did not find. A block that is freed reads as 0xDD, so that a text which is read too late is seen.
void FailTestsThatLeak();

}  // namespace tavio::test
