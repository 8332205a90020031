#include "support/ReadScope.h"

#include <atomic>

namespace px {

namespace {

std::atomic<std::uint64_t> lastNumber{0};
thread_local std::uint64_t openNumber = 0;

} // namespace

ReadScope::ReadScope() : m_outermost(openNumber == 0) {
    if (m_outermost) openNumber = ++lastNumber;
}

ReadScope::~ReadScope() {
    if (m_outermost) openNumber = 0;
}

std::uint64_t ReadScope::current() {
    return openNumber;
}

} // namespace px
