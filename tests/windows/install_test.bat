@echo off
rem Runs examples\install.bat as an administrator might, from folders with a blank and without, where programs
rem lie under the names of Windows' own. Each line says from where, with which word, what it has to end with
rem and a part of what it has to say.
setlocal DisableDelayedExpansion
if not defined passed echo Please start run-tests.bat.& exit /b 1
set failed=0
set "run=cmd /v:on /c"
mkdir install_test.tmp
cd install_test.tmp
for %%d in ("a&b!c" "a b" no_program) do (
  mkdir %%d
  copy ..\svcinst.exe %%d >nul
  copy ..\examples\install.bat %%d >nul
  for %%p in (fltmc net ping sc) do echo @exit /b 7 >%%d\%%p.bat
)
for %%d in ("a&b!c" "a b") do copy ..\end_to_end_service.exe %%d\hello.exe >nul
rem Fails as Windows' own does without the rights.
mkdir no_administrator\System32
copy ..\svcinst.exe no_administrator\System32\fltmc.exe >nul

call :expect "a&b!c"   ""               1 "usage: "
call :expect "a&b!c"   "/?"             1 "usage: "
call :expect "a&b!c"   "uninstall"      1 "usage: "
call :expect "a&b!c"   "remove"         0 "There is no service"
call :expect "a&b!c"   "INSTALL"        0 "started successfully"
call :expect "a&b!c"   "install"        1 "upgrade replaces it"
call :expect "a b"     "upgrade"        1 "has a blank"
call :expect "a&b!c"   "Upgrade"        0 "started successfully"
call :expect "a b"     "REMOVE"         0 "stop successful"
call :expect "a b"     "install"        1 "has a blank"
call :expect no_program "install"       1 "install.bat failed"
call :expect no_program "remove"        0 "is stoped"
copy ..\end_to_end_service.exe no_program\hello.new >nul
call :expect no_program "upgrade"       0 "There is no service"
call :expect no_program "upgrade"       0 "started successfully"
call :expect no_program "remove"        0 "stop successful"
sc delete hello >nul 2>&1
set "SystemRoot=%CD%\no_administrator"
set run=call
call :expect "a b" "remove" 1 "no administrator"

cd ..
rd /s /q install_test.tmp
exit /b %failed%

:expect
pushd %1
%run% install.bat %~2 >..\said 2>&1
set code=%ERRORLEVEL%
popd
if not %code% EQU %3 goto wrong
find %4 said >nul
if not errorlevel 1 exit /b
:wrong
echo install.bat %~2 in %1 ended with %code%, not with %3 and %4:
type said
set failed=1
