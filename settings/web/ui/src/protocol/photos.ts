// Uploads the user's own picture to the server, which returns a name to choose it by.

export type SentPhoto = { name: string } | { name?: undefined; problem: string };

const largestBytes = 64 * 1024 * 1024;
const noConnection = 'No connection: the picture was not sent.';

export async function sendPhoto(file: File): Promise<SentPhoto> {
  if (file.size > largestBytes) return { problem: 'The file is larger than 64 MiB, the limit for a photo.' };
  try {
    const answer = await fetch('photos', { method: 'POST', body: file, headers: { 'Content-Type': 'application/octet-stream' } });
    const told = (await answer.json()) as { name?: unknown; message?: unknown };
    if (answer.ok && typeof told.name === 'string') return { name: told.name };
    return { problem: typeof told.message === 'string' ? told.message : 'The server did not accept the picture.' };
  } catch {
    return { problem: noConnection };
  }
}
