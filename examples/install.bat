@echo off
rem install.bat install registers the service "hello", whose program hello.exe lies in this folder, and
rem starts it; remove stops it and removes it, if it is there; upgrade removes it, with what sc has set, moves
rem hello.new over hello.exe, if it is there, and installs it again. Needs svcinst.exe in this folder and an
rem administrator's prompt. Asks nothing, and upgrade and remove may be repeated. Ends with 0, or with 1 and a
rem message; where only the start fails, the service stays registered.
setlocal EnableExtensions DisableDelayedExpansion
set ERRORLEVEL=
for %%c in (install remove upgrade) do if /i "%~1"=="%%c" if "%~2"=="" goto start
echo usage: install.bat install, install.bat remove or install.bat upgrade
exit /b 1

:start
set "folder=%~dp0"
set seconds=0
rem What the current folder holds under the name of one of Windows' programs would run in its place.
cd /d "%SystemRoot%\System32"
if errorlevel 1 exit /b 1
if not exist "%folder%svcinst.exe" goto no_tool
rem Only an administrator may run fltmc. (9009: there is none, as under wine.)
fltmc >nul 2>&1
if %ERRORLEVEL% NEQ 0 if %ERRORLEVEL% NEQ 9009 goto not_elevated
if /i "%~1"=="remove" goto remove
if not "%folder%"=="%folder: =%" goto blank
if /i "%~1"=="upgrade" goto remove
sc query hello >nul 2>&1
if errorlevel 1 goto install
echo install.bat: there is a service "hello" already: upgrade replaces it.
exit /b 1

:not_elevated
echo install.bat: this is no administrator's prompt.
exit /b 1

:no_tool
echo install.bat: there is no "%folder%svcinst.exe".
exit /b 1

:blank
echo install.bat: the name of this folder has a blank: "%folder%"
echo The service's path is registered without quotes, and Windows could start another program.
exit /b 1

:remove
sc query hello >nul 2>&1
if errorlevel 1 goto nothing_there
"%folder%svcinst.exe" --uninstall --name hello
if %ERRORLEVEL% NEQ 0 goto failed

rem The name is free once the service's process has ended and nobody has a handle to it.
:wait
sc query hello >nul 2>&1
if errorlevel 1 goto removed
set /a seconds+=1
if %seconds% GTR 30 goto still_there
ping -n 2 127.0.0.1 >nul
goto wait

:still_there
echo install.bat: the service "hello" is marked for deletion, but something still uses it.
exit /b 1

:nothing_there
echo There is no service "hello".

:removed
if /i "%~1"=="remove" exit /b 0

rem The process that has just ended may still hold its file.
:move
if exist "%folder%hello.new" move /y "%folder%hello.new" "%folder%hello.exe" >nul 2>&1
if not exist "%folder%hello.new" goto install
set /a seconds+=1
if %seconds% GTR 30 goto not_moved
ping -n 2 127.0.0.1 >nul
goto move

:not_moved
echo install.bat: the service is removed, but hello.new can't be moved over hello.exe: repeat the upgrade later.
exit /b 1

rem The tool is started by its full path: "hello.exe" is then looked for in the tool's folder.
:install
"%folder%svcinst.exe" --install --name hello --disname "Hello service" --binpath hello.exe --dep RpcSs --desc "Says hello to the network."
if %ERRORLEVEL% NEQ 0 goto failed
net start hello
if %ERRORLEVEL% NEQ 0 goto failed
exit /b 0

:failed
echo install.bat failed: see the message above.
exit /b 1
