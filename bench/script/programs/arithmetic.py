import time

def main():
    x, y = 0.5, 0
    for i in range(1, 1000001):
        x = x * 1.000001 + i / 3 - y
        y = y + i - 7
        if y > 1000000:
            y = y - 1000000
    return y

start = time.process_time()
result = main()
print(time.process_time() - start, result)
