@echo off
rem install.bat install registers the service "hello", whose program hello.exe lies in this folder, and
rem starts it; remove stops it and removes it, if it is there; upgrade removes it and installs it again.
rem Needs svcinst.exe in this folder and an administrator's prompt. Ends with 0, or with 1 and a message;
rem where only the start fails, the service stays registered.
setlocal

for %%c in (install remove upgrade) do if /i "%~1"=="%%c" if "%~2"=="" goto check
echo usage: install.bat install, install.bat remove or install.bat upgrade
exit /b 1

:check
rem Only an administrator may run fltmc. (9009: there is none, as under wine.)
fltmc >nul 2>&1
if %ERRORLEVEL% EQU 0 goto elevated
if %ERRORLEVEL% EQU 9009 goto elevated
echo install.bat: this is no administrator's prompt.
exit /b 1

:elevated
set "folder=%~dp0"
if /i "%~1"=="remove" goto remove
if "%folder%"=="%folder: =%" goto no_blank
echo install.bat: the name of this folder has a blank: "%folder%"
echo The service's path is registered without quotes, and Windows could start another program.
exit /b 1

:no_blank
if /i "%~1"=="install" goto install

:remove
sc query hello >nul 2>&1
if errorlevel 1 goto nothing_there
"%folder%svcinst.exe" --uninstall --name hello
if %ERRORLEVEL% NEQ 0 goto failed
set seconds=0

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
