// uiParticleSystem: one particle system instance of the graphics service, moved, advanced and drawn
// with the widget.
#include "uiparticlesystem.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiParticleSystem, uiWidget, "uiparticlesystem.h")

// ---- description keys -------------------------------------------------------------------------------

void uiParticleSystem::_parseParams(Parser* parser, char* key) {
    if (!ui::equalNoCase(key, "file")) return uiWidget::_parseParams(parser, key);
    const char* file = parser->GetEqualsToken() ? parser->GetToken(" ") : nullptr;
    if (file)
        loadPsys(file);
    else
        _parseError("file = \"val\"");
}

void uiParticleSystem::_parseSingleFlag(const char* flagName) {
    if (ui::equalNoCase(flagName, "UIP_DONTUPDATE"))
        flags |= UIP_DONTUPDATE;
    else if (ui::equalNoCase(flagName, "UIP_DONTRENDER"))
        flags |= UIP_DONTRENDER;
    else
        uiWidget::_parseSingleFlag(flagName);
}

// ---- instance ---------------------------------------------------------------------------------------

// The graphics service owns instances by owner name; whatever id it answers is kept as given.
void uiParticleSystem::loadPsys(const char* file) {
    releaseInstance();
    psysInstance = g_gfx ? g_gfx->createParticleSystemInstance(name, file) : -1;
}

void uiParticleSystem::reset() {
    if (g_gfx && psysInstance != -1)
        g_gfx->addEvent(gfxSubsystem::kParticleRestartEvent, 0, psysInstance, 0, 0.0f, nullptr);
}

void uiParticleSystem::stop() {
    if (g_gfx && psysInstance != -1) g_gfx->particleSystemInstanceStopEmitters(psysInstance);
}

void uiParticleSystem::releaseInstance() {
    if (psysInstance == -1) return;
    if (g_gfx) g_gfx->releaseParticleSystemInstance(name);
    psysInstance = -1;
}

void uiParticleSystem::setAlpha(unsigned char newAlpha, unsigned int time, unsigned int delay, bool recurse) {
    if (flags & WF_IGNORE_ALPHA) return;
    alpha = newAlpha;
    uiWidget::setAlpha(newAlpha, time, delay, recurse);
}

// ---- frame ------------------------------------------------------------------------------------------

// A dead instance is left to its owner: the widget keeps advancing and drawing it until released.
void uiParticleSystem::_update(int ox, int oy) {
    if ((flags & UIP_DONTUPDATE) || psysInstance == -1 || !g_gfx) return;
    g_gfx->updateParticleSystem(psysInstance, ox + rect.x, oy + rect.y, s_fDeltaTime);
}

void uiParticleSystem::_render(int ox, int oy) {
    if ((flags & UIP_DONTRENDER) || psysInstance == -1 || !g_gfx) return;
    g_gfx->psemit(static_cast<int>(depth), psysInstance, alpha * (1.0f / 255.0f));
}

bool uiParticleSystem::_inputEvent(e_uiEvent, int, int, int, bool, bool) {
    return false;
}
