// Base classes of all proxies: an interface on top of a remote binder.
#pragma once

#include <hwbinder/IBinder.h>

namespace android::hardware {

class IInterface : public virtual RefBase {
  public:
    static sp<IBinder> asBinder(const IInterface* interface);
    static sp<IBinder> asBinder(const sp<IInterface>& interface);

  protected:
    ~IInterface() override = default;
    virtual IBinder* onAsBinder() const = 0;
};

// Holds the remote binder of a proxy as long as the proxy lives.
class BpHwRefBase : public virtual RefBase {
  protected:
    explicit BpHwRefBase(const sp<IBinder>& remote) : mRemote(remote) {}
    ~BpHwRefBase() override = default;
    IBinder* remote() const { return mRemote.get(); }

  private:
    const sp<IBinder> mRemote;
};

template <typename INTERFACE>
class BpInterface : public INTERFACE, public IInterface, public BpHwRefBase {
  public:
    explicit BpInterface(const sp<IBinder>& remote) : BpHwRefBase(remote) {}

  protected:
    IBinder* onAsBinder() const override { return remote(); }
};

}  // namespace android::hardware
