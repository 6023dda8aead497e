// Export macro for the library's public interface. The library is built with hidden visibility,
// so only what carries UI_API is visible to games.
#pragma once

#if defined(_WIN32)
#if defined(GAMEUI_BUILDING)
#define UI_API __declspec(dllexport)
#elif defined(GAMEUI_STATIC)
#define UI_API
#else
#define UI_API __declspec(dllimport)
#endif
#else
// Visible to games; everything else in the library is hidden.
#define UI_API __attribute__((visibility("default")))
#endif
