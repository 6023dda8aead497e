# gameui: `make test` builds and runs the whole suite (normal, sanitizer and Windows builds) on a fresh
# Debian 12.
JOBS ?= $(shell nproc)
GENERATOR := $(shell command -v ninja >/dev/null 2>&1 && echo "-G Ninja")
LAUNCHER := $(shell command -v ccache >/dev/null 2>&1 && echo "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
CMAKE_COMMON = $(GENERATOR) $(LAUNCHER) -DCMAKE_BUILD_TYPE=$(1)
DEB_PACKAGES := cmake g++ make ninja-build ccache pkg-config libgtest-dev libgmock-dev libbenchmark-dev \
  libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev libsdl2-mixer-dev fonts-dejavu-core \
  clang libclang-rt-14-dev clang-format valgrind libcli11-dev nlohmann-json3-dev
# The Windows build: MinGW-w64 with posix threads, Wine without a display, GoogleTest's sources, and the
# header-only libraries of the tools.
WINDOWS_PACKAGES := cmake make ninja-build ccache g++-mingw-w64-x86-64-posix wine64 googletest libcli11-dev \
  nlohmann-json3-dev
WINE_RUN := $(CURDIR)/cmake/wine-run
WINE_PREFIX := $(CURDIR)/build/wineprefix

.PHONY: all deps deps-windows build demo golden docs package test test-normal test-asan tsan windows web \
  test-web bench bench-deps fuzz-build fuzz memcheck test-size clean format format-check

all: build

# Installs the Debian packages $(1) when they are missing and we may install them.
define install_missing
	@missing=""; for p in $(1); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  if [ "$$(id -u)" = 0 ]; then \
	    echo "installing:$$missing"; \
	    apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $$missing; \
	  else echo "missing Debian packages:$$missing (run as root or install them)"; fi; \
	fi
endef

deps:
	$(call install_missing,$(DEB_PACKAGES))

deps-windows:
	$(call install_missing,$(WINDOWS_PACKAGES))

# make test's builds turn warnings of the project's own code into errors (GAMEUI_WERROR, cmake/warnings.cmake).
WERROR ?= OFF
test test-normal test-asan tsan: WERROR = ON

build: deps
	cmake -S . -B build/normal $(call CMAKE_COMMON,RelWithDebInfo) -DGAMEUI_WERROR=$(WERROR)
	cmake --build build/normal -j $(JOBS)

# Runs the example screens and the game off screen with their scripted sessions; frames go to
# out/demo/<example>/ and out/demo/game/. Builds only what the demo runs (the library, the SDL services,
# uiview and the game).
demo: deps
	cmake -S . -B build/normal $(call CMAKE_COMMON,RelWithDebInfo)
	cmake --build build/normal -j $(JOBS) --target uiview starcatcher
	SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy examples/run_demo.sh build/normal/tools/uiview/uiview \
	  build/normal/examples/game/starcatcher

# Remakes the README's gallery in docs/images/gallery from make demo's frames and every frame of the game's
# session.
.PHONY: gallery
gallery: demo
	$(call install_missing,python3-pil)
	rm -rf out/gallery && mkdir -p out/gallery
	sed '/^png/d' examples/game/demo.script >out/gallery/session.script
	SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy build/normal/examples/game/starcatcher $$(cat examples/game/demo.args) \
	  --prefs out/gallery/prefs --script out/gallery/session.script --png out/gallery/frame%04d.png
	/usr/bin/python3 docs/make_gallery.py out/demo out/gallery docs/images/gallery

# Builds the game and opens it in a window.
.PHONY: play
play: deps
	cmake -S . -B build/normal $(call CMAKE_COMMON,RelWithDebInfo)
	cmake --build build/normal -j $(JOBS) --target starcatcher
	build/normal/examples/game/starcatcher

# Regenerates the golden images of the example sessions from a fresh demo run.
golden: demo
	for d in tests/golden/*/; do cp out/demo/$$(basename $$d)/frame*.png $$d; done

# Every C++ source and header the repository tracks follows .clang-format (Debian's clang-format);
# `make format` rewrites them, `make format-check` (part of `make test`) fails on the first one that differs.
FORMAT_SOURCES = $(shell git ls-files '*.cpp' '*.h')
format: deps
	clang-format -i $(FORMAT_SOURCES)
format-check: deps
	clang-format --dry-run --Werror $(FORMAT_SOURCES)

test-normal: build
	cd build/normal && ctest --output-on-failure -j $(JOBS)
	cd examples && ../build/normal/tools/uilint/uilint --assets . *.ui
	cd examples/game && ../../build/normal/tools/uilint/uilint --assets . *.ui

test-asan: deps
	cmake -S . -B build/asan $(call CMAKE_COMMON,Debug) -DGAMEUI_SANITIZE=address,undefined -DGAMEUI_WERROR=$(WERROR)
	cmake --build build/asan -j $(JOBS)
	cd build/asan && ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  ctest --output-on-failure -j $(JOBS)

# ThreadSanitizer over the tests that run threads (background loading, locks, thread-safe doubles).
TSAN_TESTS := Thread|Loader
tsan: deps
	cmake -S . -B build/tsan $(call CMAKE_COMMON,Debug) -DGAMEUI_SANITIZE=thread -DGAMEUI_SDL=OFF -DGAMEUI_WERROR=$(WERROR)
	cmake --build build/tsan -j $(JOBS)
	cd build/tsan && TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
	  ctest --output-on-failure -j $(JOBS) -R '$(TSAN_TESTS)'

# Cross-builds gameui.dll, the test kit and the tests for 64-bit Windows and runs them under Wine.
windows: deps-windows $(WINE_PREFIX)/system.reg
	cmake -S . -B build/windows $(call CMAKE_COMMON,RelWithDebInfo) -DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/mingw-w64-x86_64.cmake
	cmake --build build/windows -j $(JOBS)
	cd build/windows && ctest --output-on-failure -j $(JOBS)

# Wine's first start fills its prefix (half a minute); it is made once and kept with the build.
$(WINE_PREFIX)/system.reg: | deps-windows
	mkdir -p $(WINE_PREFIX)
	GAMEUI_WINEPREFIX=$(WINE_PREFIX) $(WINE_RUN) wineboot --init

# The browser build: the library, the web services, uiview's session player and the game compiled by
# Emscripten, without and with threads, into out/web/ (index.html; gameui*.js, .wasm and the packed
# examples, .data; the game's starcatcher*.js, .wasm and .data, played at index.html?screen=game).
# Serve out/web over HTTP; sent with the cross-origin isolation headers, the page runs the build with threads.
WEB_PACKAGES := emscripten libstb-dev fonts-dejavu-core
# Debian's Emscripten runs its JavaScript optimiser on the installed Node, which needs Debian's modules.
EMSCRIPTEN_ENV := NODE_PATH=/usr/share/nodejs
WEB_CMAKE = $(call CMAKE_COMMON,Release) -DBUILD_SHARED_LIBS=OFF -DGAMEUI_TESTS=OFF -DGAMEUI_SDL=OFF
web:
	$(call install_missing,$(WEB_PACKAGES))
	$(EMSCRIPTEN_ENV) emcmake cmake -S . -B build/web $(WEB_CMAKE)
	$(EMSCRIPTEN_ENV) cmake --build build/web -j $(JOBS) --target uiview_web starcatcher_web
	$(EMSCRIPTEN_ENV) emcmake cmake -S . -B build/web-threads $(WEB_CMAKE) -DGAMEUI_WEB_THREADS=ON
	$(EMSCRIPTEN_ENV) cmake --build build/web-threads -j $(JOBS) --target uiview_web starcatcher_web
	mkdir -p out/web
	cp tools/uiview/web/index.html out/web/
	cd build/web/tools/uiview/web && cp gameui.js gameui.wasm gameui.data $(CURDIR)/out/web/
	cd build/web-threads/tools/uiview/web && cp gameui-threads.js gameui-threads.wasm gameui-threads.worker.js \
	  gameui-threads.data $(CURDIR)/out/web/
	cd build/web/examples/game/src/web && cp starcatcher.js starcatcher.wasm starcatcher.data $(CURDIR)/out/web/
	cd build/web-threads/examples/game/src/web && cp starcatcher-threads.js starcatcher-threads.wasm \
	  starcatcher-threads.worker.js starcatcher-threads.data $(CURDIR)/out/web/

# The example sessions and the game's in headless Chromium on the browser build, their frames compared
# with the golden ones, then the game played live through the page's input (tests/web; its npm packages,
# pinned, in cmake/browser-test). Skipped, saying so, only where Emscripten, Chromium or npm cannot be
# installed.
test-web:
	$(call install_missing,$(WEB_PACKAGES) chromium)
	@command -v npm >/dev/null || $(MAKE) --no-print-directory deps DEB_PACKAGES=npm
	@if command -v emcc >/dev/null && command -v chromium >/dev/null && command -v npm >/dev/null; then \
	  $(MAKE) --no-print-directory web && npm ci --prefix cmake/browser-test --no-audit --no-fund && \
	  NODE_PATH=$(CURDIR)/cmake/browser-test/node_modules node tests/web/browser_test.js out/web .; \
	else echo "browser test SKIPPED: Emscripten, Chromium or npm is not installed and cannot be installed here"; fi

# libFuzzer targets, built by clang with AddressSanitizer and UBSan, the library linked in statically. Each
# runs FUZZ_SECONDS from the seeds in fuzz/corpus/<target> plus what earlier runs found in build/fuzz/work;
# a crash, leak, sanitizer report or hang stops the run and leaves the input in build/fuzz/artifacts.
FUZZ_SECONDS ?= 60
FUZZ_TARGETS := description scriptlet banner stringtable entry screens buttonwalk
fuzz-build: deps
	cmake -S . -B build/fuzz $(GENERATOR) $(LAUNCHER) -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
	  -DBUILD_SHARED_LIBS=OFF -DGAMEUI_TESTS=OFF -DGAMEUI_SDL=OFF -DGAMEUI_FUZZ=ON -DGAMEUI_SANITIZE=address,undefined
	cmake --build build/fuzz -j $(JOBS)

fuzz: fuzz-build
	@mkdir -p build/fuzz/artifacts
	@for t in $(FUZZ_TARGETS); do \
	  mkdir -p build/fuzz/work/$$t; echo "fuzz_$$t: $(FUZZ_SECONDS) s"; \
	  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 build/fuzz/fuzz/fuzz_$$t build/fuzz/work/$$t fuzz/corpus/$$t \
	    -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=2048 -artifact_prefix=build/fuzz/artifacts/$$t- \
	    >build/fuzz/$$t.log 2>&1 || { tail -80 build/fuzz/$$t.log; echo "fuzz_$$t found a fault"; exit 1; }; \
	done

# Lines of the tests against lines of the code; fails above a ratio of 0.36.
test-size:
	@cmake/test-size

# make test fuzzes each target for TEST_FUZZ_SECONDS; it fails first if the tests outgrow their share.
TEST_FUZZ_SECONDS ?= 30
test: format-check test-size test-normal test-asan tsan windows docs test-web
	$(MAKE) fuzz FUZZ_SECONDS=$(TEST_FUZZ_SECONDS)

# The API reference of the public headers, the services' and the test kit's, with the tutorial and the
# format reference as pages, into out/docs/html. Any broken reference or markup fails it, and so does
# any public member without a comment (beyond DOCS_UNDOCUMENTED, for a header on its way).
DOCS_UNDOCUMENTED ?= 0
docs:
	$(call install_missing,doxygen)
	rm -rf out/docs && mkdir -p out/docs
	doxygen docs/Doxyfile
	@if grep -v "is not documented" out/docs/warnings.log; then echo "docs: broken references or markup"; exit 1; fi
	@n=$$(grep "is not documented" out/docs/warnings.log | cut -d: -f1,2 | sort -u | wc -l); \
	  echo "docs: out/docs/html/index.html ($$n public members without a comment, at most $(DOCS_UNDOCUMENTED))"; \
	  [ $$n -le $(DOCS_UNDOCUMENTED) ]

# Debian packages (libgameui0, libgameui-dev, libgameui-sdl-dev, gameui-tools) and a .tar.gz of a
# Release build, into out/package. Then the packages are unpacked into a scratch root (no root needed)
# and a game's programs are built against it and run, as the install test does with its own prefix.
package: deps
	$(call install_missing,dpkg-dev)
	cmake -S . -B build/package $(call CMAKE_COMMON,Release) -DCMAKE_INSTALL_PREFIX=/usr -DGAMEUI_TESTS=OFF
	cmake --build build/package -j $(JOBS)
	rm -rf out/package build/package/root
	cd build/package && cpack -G "DEB;TGZ" -B $(CURDIR)/out/package
	rm -rf out/package/_CPack_Packages
	for p in out/package/*.deb; do dpkg -x $$p build/package/root; done
	cmake -DPREFIX=$(CURDIR)/build/package/root/usr -DSOURCE_DIR=$(CURDIR) -DWORK_DIR=$(CURDIR)/build/package/check \
	  -DGENERATOR="$(if $(GENERATOR),Ninja,Unix Makefiles)" -DCXX=c++ -DLAUNCHER=$(shell command -v ccache) \
	  -P cmake/check-install.cmake
	@ls out/package

# Benchmarks (never part of `make test`): gameui, and CEGUI and MyGUI side by side where installed. Builds
# in Release; counts each library's instructions for the same work under callgrind (exact, whatever else
# the machine runs), runs the timed programs in BENCH_ROUNDS interleaved rounds, and writes
# out/bench/results.{md,json} and the charts out/bench/*.svg. Programs run from out/bench, so that the
# peers' own log files land there too.
BENCH_PACKAGES := libbenchmark-dev libcegui-mk2-dev libmygui-dev valgrind python3-matplotlib
BENCH_ARGS ?= --benchmark_min_time=0.2
BENCH_ROUNDS ?= 3
# Debian's Python, which sees python3-matplotlib (a python3 found earlier on PATH may not).
BENCH_PYTHON ?= /usr/bin/python3
bench-deps:
	@$(MAKE) --no-print-directory deps DEB_PACKAGES="$(DEB_PACKAGES) $(BENCH_PACKAGES)"

BENCH_CMAKE = $(call CMAKE_COMMON,Release) -DGAMEUI_BENCH=ON -DGAMEUI_TESTS=OFF -DGAMEUI_SDL=OFF
bench: bench-deps
	cmake -S . -B build/bench $(BENCH_CMAKE)
	cmake --build build/bench -j $(JOBS)
	mkdir -p out/bench/data
	rm -f out/bench/memory_*.json
	cd out/bench && for p in ../../build/bench/bench/memory_*; do "$$p" data > $$(basename $$p).json; done
	$(BENCH_PYTHON) bench/count_instructions.py build/bench/bench out/bench
	$(BENCH_PYTHON) bench/run_timed.py build/bench/bench out/bench $(BENCH_ROUNDS) $(BENCH_ARGS)
	$(BENCH_PYTHON) bench/report.py out/bench
	@echo "results: out/bench/results.md, out/bench/results.json, out/bench/*.svg"

# gameui's frame and input benchmarks timed natively and in headless Chromium by one harness (bench/web),
# built by the native compiler and by Emscripten as make web builds, in BENCH_WEB_ROUNDS interleaved rounds
# of BENCH_WEB_SECONDS per operation; the table goes to out/bench-web/results.{md,json}. Never part of
# make test.
BENCH_WEB_ROUNDS ?= 3
BENCH_WEB_SECONDS ?= 0.2
.PHONY: bench-web
bench-web: deps
	$(call install_missing,$(WEB_PACKAGES) chromium)
	@command -v npm >/dev/null || $(MAKE) --no-print-directory deps DEB_PACKAGES=npm
	cmake -S . -B build/bench $(BENCH_CMAKE)
	cmake --build build/bench -j $(JOBS) --target timing_gameui
	$(EMSCRIPTEN_ENV) emcmake cmake -S . -B build/bench-web $(WEB_CMAKE) -DGAMEUI_BENCH=ON
	$(EMSCRIPTEN_ENV) cmake --build build/bench-web -j $(JOBS) --target timing_gameui
	npm ci --prefix cmake/browser-test --no-audit --no-fund
	NODE_PATH=$(CURDIR)/cmake/browser-test/node_modules node bench/web/run_chromium.js \
	  build/bench/bench/web/timing_gameui build/bench-web/bench/web out/bench-web $(BENCH_WEB_ROUNDS) $(BENCH_WEB_SECONDS)

# Valgrind's memcheck over the normal test build: the library's suite, then the SDL services' (on SDL's
# dummy drivers) when they were built. Any memory error or definite leak fails it. Not part of make test:
# it takes a few minutes.
MEMCHECK := valgrind --tool=memcheck --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite \
  --track-origins=yes
memcheck: build
	cd build/normal && $(MEMCHECK) ./tests/gameui_tests
	cd build/normal && if [ -x tests/sdl/gameui_sdl_tests ]; then \
	  SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy $(MEMCHECK) ./tests/sdl/gameui_sdl_tests; fi

clean:
	rm -rf build out
