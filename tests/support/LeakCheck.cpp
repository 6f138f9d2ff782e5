#include "tests/support/LeakCheck.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <objidl.h>
#include <oleauto.h>

#include <atomic>
#include <cstring>
#include <filesystem>

#include "com/server/ModuleUse.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/NewContainer.h"
#include "foundation/values/OwnModule.h"
#include "tests/support/Server.h"

namespace tavio::test {
namespace {

class Spy final : public IMallocSpy {
 public:
  long Living() const noexcept { return living_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IMallocSpy;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    living_ += block != nullptr;
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL counted) override {
    if (!counted || !block) return block;
    --living_;
    const SIZE_T size = HeapSize(GetProcessHeap(), 0, block);
    if (size != static_cast<SIZE_T>(-1)) std::memset(block, 0xDD, size);
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL) override {}
  STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** given, BOOL) override {
    *given = block;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int answer) override { return answer; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}

 private:
  std::atomic<long> living_ = 0;
};

Spy spy;

// What a test must leave as it found it. A server keeps what describes its classes until it is asked whether it may go.
class LeakCheck final : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override {
    ForgetContainerFactories();
    for (const auto& server : servers_) CanUnload(server);
    objects_ = com::ModuleUse();
    blocks_ = spy.Living();
  }
  void OnTestEnd(const ::testing::TestInfo&) override {
    ForgetContainerFactories();
    for (const auto& server : servers_) EXPECT_EQ(CanUnload(server), S_OK) << "objects are alive in " << server;
    EXPECT_EQ(com::ModuleUse(), objects_) << "fakes and other objects of the test program";
    EXPECT_EQ(spy.Living(), blocks_) << "blocks of COM's memory";
  }

  const std::filesystem::path folder_ = GetAppFolder(), bin_ = folder_.parent_path().parent_path() / L"bin";
  // The library first, which keeps factories of its containers.
  const std::filesystem::path servers_[3] = {bin_ / L"TavioClassBillAction.dll", bin_ / L"Vexo10.dll",
                                             folder_ / L"Vexo10.dll"};
  long objects_ = 0;
  long blocks_ = 0;
};

// The system keeps freed texts for later, which would count as living. The function is in no import library for x86.
void KeepNoFreedTexts() {
  using SetNoCache = void(WINAPI*)();
  const auto function = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache");
  ASSERT_TRUE(function);
  reinterpret_cast<SetNoCache>(reinterpret_cast<void*>(function))();
}

}  // namespace

void FailTestsThatLeak() {
  KeepNoFreedTexts();
  // It keeps what describes it for good.
  Component::Create(L"Scripting.FileSystemObject").Call(L"GetTempName");
  const HRESULT watched = CoRegisterMallocSpy(&spy);
  EXPECT_EQ(watched, S_OK);
  ::testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck);
}

}  // namespace tavio::test
