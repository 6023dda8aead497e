// The particle half of a graphics service, shared by the SDL and browser services: instances of effect
// files from the asset directory, keyed by id and by owner, each drawing one sprite the service creates
// by name. The service itself draws them (psemit) and shares the lock every call takes.
#pragma once
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include "gfxsubsystem.h"
#include "particles.h"

namespace assets {

class ParticleGfx : public gfxSubsystem {
public:
    int createParticleSystemInstance(const char* owner, const char* file) override;
    void releaseParticleSystemInstance(const char* owner) override;
    void releaseParticleSystemInstance(int instance) override;
    void updateParticleSystem(int instance, int x, int y, float seconds) override;
    bool particleSystemInstanceIsDead(int instance) override;
    void particleSystemInstanceStopEmitters(int instance) override;
    void addEvent(int event, int a, int b, int c, float f, void* p) override;

protected:
    // `service` names the service in log messages.
    ParticleGfx(const char* service, const std::string& assetDir)
        : m_assetDir(assetDir), m_service(service) {}

    struct Psys {
        std::unique_ptr<ParticleInstance> instance;
        int sprite = -1;
    };
    Psys* _psys(int instance);
    int _particleCount() const;

    std::recursive_mutex m_lock;
    std::string m_assetDir;
    const char* m_service;
    std::map<int, Psys> m_psys;

private:
    int m_nextPsys = 0;
};

} // namespace assets
