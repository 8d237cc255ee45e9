@echo off
rem Registers the service "hello", whose program hello.exe lies in this folder, and starts it.
rem "install.bat remove" stops it and removes it. Needs svcinst.exe in this folder and an
rem administrator's prompt. Ends with 0 or 1; where the start fails, the service stays registered.

if "%~1"=="remove" goto remove

rem The tool is started by its full path: "hello.exe" is then looked for in the tool's folder.
"%~dp0svcinst.exe" --install --name hello --disname "Hello service" --binpath hello.exe --dep RpcSs --desc "Says hello to the network."
if %ERRORLEVEL% NEQ 0 goto failed
net start hello
if %ERRORLEVEL% NEQ 0 goto failed
exit /b 0

:remove
"%~dp0svcinst.exe" --uninstall --name hello
if %ERRORLEVEL% NEQ 0 goto failed
exit /b 0

:failed
echo install.bat failed: see the message above.
exit /b 1
