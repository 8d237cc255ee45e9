# Registers the service "hello", whose program hello.exe lies in this folder, and starts it.
# "install.ps1 -Remove" stops it and removes it. Needs svcinst.exe in this folder and an
# administrator's prompt. Ends with 0 or 1.
param([switch]$Remove)

# The tool is started by its full path: "hello.exe" is then looked for in the tool's folder.
$tool = Join-Path $PSScriptRoot 'svcinst.exe'

if ($Remove) {
    & $tool --uninstall --name hello
    if ($LASTEXITCODE -ne 0) { exit 1 }
    exit 0
}

& $tool --install --name hello --disname 'Hello service' --binpath hello.exe `
    --dep RpcSs --desc 'Says hello to the network.'
if ($LASTEXITCODE -ne 0) { exit 1 }
Start-Service hello
if (-not $?) { exit 1 }
exit 0
