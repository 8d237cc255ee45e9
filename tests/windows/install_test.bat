@echo off
rem Runs examples\install.bat as an administrator might, from folders with a blank and without. Each line says
rem from where, with which word, what it has to end with and a part of what it has to say.
setlocal
set failed=0
for %%d in ("a&b^c" "a b" no_program no_administrator) do (
  mkdir %%d
  copy svcinst.exe %%d >nul
  copy examples\install.bat %%d >nul
)
for %%d in ("a&b^c" "a b") do copy end_to_end_service.exe %%d\hello.exe >nul
rem Stands before the system's own in the search, and fails as that does without the rights.
copy svcinst.exe no_administrator\fltmc.exe >nul

call :expect "a&b^c" ""               1 "usage: "
call :expect "a&b^c" "/?"             1 "usage: "
call :expect "a&b^c" "uninstall"      1 "usage: "
call :expect "a&b^c" "remove"         0 "There is no service"
call :expect "a&b^c" "INSTALL"        0 "started successfully"
call :expect "a&b^c" "install"        1 "install.bat failed"
call :expect "a b"   "upgrade"        1 "has a blank"
call :expect "a&b^c" "Upgrade"        0 "started successfully"
call :expect "no_administrator" "remove" 1 "no administrator"
call :expect "a b"   "REMOVE"         0 "stop successful"
call :expect "a b"   "install"        1 "has a blank"
call :expect "no_program" "install"   1 "install.bat failed"
call :expect "no_program" "remove"    0 "is stoped"
call :expect "a&b^c" "remove"         0 "There is no service"

for %%d in ("a&b^c" "a b" no_program no_administrator) do rd /s /q %%d
del said
exit /b %failed%

:expect
pushd %1
call install.bat %~2 >..\said 2>&1
set code=%ERRORLEVEL%
popd
if not %code% EQU %3 goto wrong
find %4 said >nul
if not errorlevel 1 exit /b
:wrong
echo install.bat %~2 in %1 ended with %code%, not with %3 and %4:
type said
set failed=1
